// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Vorlage.h"

#include "TestProgram.h"

#include <QTest>

using namespace paukfix;

class VorlageTest : public QObject
{
    Q_OBJECT

private slots:
    void FieldsAndSectionsAreFilledIn_data();
    void FieldsAndSectionsAreFilledIn();
    void BrokenTemplatesAreNone_data();
    void BrokenTemplatesAreNone();
    void GapsAreLeftOutOrShown_data();
    void GapsAreLeftOutOrShown();
    void SectionsOfGapsFollowTheOneThatIsAsked();
    void FoldedHintsAreTold();
    void ATemplateThatMultipliesIsGivenUp();
    void OnlyWhiteSpaceCountsAsEmpty_data();
    void OnlyWhiteSpaceCountsAsEmpty();
};

namespace {

QString Gefuellt(const QString &vorlage, bool antwort = false)
{
    Vorlagenwerte werte;
    werte.felder = {"eins", "", "<b>drei</b> {{Vorn}}"};
    werte.schlagwoerter = "a b";
    werte.stapel = "Oben::Unten & mehr";
    werte.notiztyp = "Typ";
    werte.karte = "Karte 1";
    werte.antwort = antwort;
    const auto fertig = Vorlage::Lesen(vorlage, {"Vorn", "Leer", "Hinten"});
    if (!fertig)
        return "keine";
    QString html;
    QStringList hinweise;
    fertig->Fuellen(werte, html, hinweise);
    return html;
}

} // namespace

void VorlageTest::FieldsAndSectionsAreFilledIn_data()
{
    QTest::addColumn<QString>("template_");
    QTest::addColumn<QString>("html");
    QTest::newRow("field") << "a{{Vorn}}b{{ Vorn }}"
                           << "aeinsbeins";
    QTest::newRow("not filled twice") << "{{Hinten}}"
                                      << "<b>drei</b> {{Vorn}}";
    QTest::newRow("section") << "{{#Vorn}}ja{{/Vorn}}{{#Leer}}nein{{/Leer}}"
                             << "ja";
    QTest::newRow("other section") << "{{^Vorn}}nein{{/Vorn}}{{^Leer}}ja{{/Leer}}"
                                   << "ja";
    QTest::newRow("sections in sections") << "{{#Vorn}}{{^Leer}}x{{#Leer}}y{{/Leer}}{{/Leer}}z{{/Vorn}}"
                                          << "xz";
    QTest::newRow("as text") << "{{text:Hinten}}"
                             << "drei {{Vorn}}";
    QTest::newRow("typed") << "a{{type:Vorn}}"
                           << "a";
    QTest::newRow("unknown field") << "a{{Nichts}}b"
                                   << "ab";
    QTest::newRow("unknown filter") << "{{furigana:Vorn}}"
                                    << "eins";
    QTest::newRow("special") << "{{Tags}}|{{Deck}}|{{Subdeck}}|{{Type}}|{{Card}}"
                             << "a b|Oben::Unten &amp; mehr|Unten &amp; mehr|Typ|Karte 1";
    QTest::newRow("comment") << "a<!-- {{Vorn}} {{#Vorn}} -->b"
                             << "ab";
    QTest::newRow("lone braces") << "a } b { c"
                                 << "a } b { c";
}

void VorlageTest::FieldsAndSectionsAreFilledIn()
{
    QFETCH(const QString, template_);
    QFETCH(const QString, html);
    QCOMPARE(Gefuellt(template_), html);
}

void VorlageTest::BrokenTemplatesAreNone_data()
{
    QTest::addColumn<QString>("template_");
    QTest::newRow("no end") << "{{Vorn";
    QTest::newRow("section without end") << "{{#Vorn}}a";
    QTest::newRow("end without section") << "a{{/Vorn}}";
    QTest::newRow("crossed") << "{{#Vorn}}{{#Leer}}{{/Vorn}}{{/Leer}}";
    QTest::newRow("deep") << QString("{{#Vorn}}").repeated(5000) + QString("{{/Vorn}}").repeated(5000);
    QTest::newRow("huge") << QString("x").repeated(1'000'001);
}

void VorlageTest::BrokenTemplatesAreNone()
{
    QFETCH(const QString, template_);
    QCOMPARE(Gefuellt(template_), "keine");
}

void VorlageTest::GapsAreLeftOutOrShown_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("gap");
    QTest::addColumn<QString>("question");
    QTest::addColumn<QString>("answer");
    QTest::newRow("one of two") << "{{c1::Berlin}} an der {{c2::Spree}}" << 2 << "Berlin an der [...]"
                                << "Berlin an der <b>Spree</b>";
    QTest::newRow("hint") << "{{c1::Paris::Stadt}}" << 1 << "[Stadt]"
                          << "<b>Paris</b>";
    QTest::newRow("twice") << "{{c1::a}} {{c1::b}}" << 1 << "[...] [...]"
                           << "<b>a</b> <b>b</b>";
    QTest::newRow("nested, outer") << "{{c1::a {{c2::b}} c}}" << 1 << "[...]"
                                   << "<b>a b c</b>";
    QTest::newRow("nested, inner") << "{{c1::a {{c2::b}} c}}" << 2 << "a [...] c"
                                   << "a <b>b</b> c";
    QTest::newRow("many numbers") << "{{c1,3::a}}" << 3 << "[...]"
                                  << "<b>a</b>";
    QTest::newRow("no end") << "{{c1::a" << 1 << "{{c1::a"
                            << "{{c1::a";
    QTest::newRow("no gap") << "{{Vorn}} {{c::a}} {{cx::a}}" << 1 << ""
                            << "";
}

void VorlageTest::GapsAreLeftOutOrShown()
{
    QFETCH(const QString, text);
    QFETCH(const int, gap);
    QFETCH(const QString, question);
    QFETCH(const QString, answer);
    QString frage;
    QString antwort;
    const bool da = LueckenFuellen(text, gap, false, frage);
    QCOMPARE(da, !question.isEmpty());
    if (!da)
        return;
    QCOMPARE(frage, question);
    LueckenFuellen(text, gap, true, antwort);
    QCOMPARE(antwort, answer);
}

void VorlageTest::SectionsOfGapsFollowTheOneThatIsAsked()
{
    Vorlagenwerte werte;
    werte.felder = {"x"};
    werte.luecke = 2;
    QString html;
    QStringList hinweise;
    const auto vorlage = Vorlage::Lesen(
        "{{#c1}}eins{{/c1}}{{#c2}}zwei{{/c2}}{{^c1}}nicht eins{{/c1}}{{^c2}}nicht zwei{{/c2}}", {"Feld"});
    vorlage->Fuellen(werte, html, hinweise);
    QCOMPARE(html, "zweinicht eins");
}

void VorlageTest::FoldedHintsAreTold()
{
    Vorlagenwerte werte;
    werte.felder = {"<b>Hilfe</b>", ""};
    QString html;
    QStringList hinweise;
    Vorlage::Lesen("a{{hint:Merkhilfe}}{{hint:Leer}}", {"Merkhilfe", "Leer"})->Fuellen(werte, html, hinweise);
    QCOMPARE(html, "a");
    QCOMPARE(hinweise, QStringList{"Hilfe"});
}

void VorlageTest::ATemplateThatMultipliesIsGivenUp()
{
    Vorlagenwerte werte;
    werte.felder = {QString(100'000, 'x')};
    QString html;
    QStringList hinweise;
    const auto vorlage = Vorlage::Lesen(QString("{{Feld}}").repeated(10'000), {"Feld"});
    QCOMPARE(vorlage->Fuellen(werte, html, hinweise), Vorlage::Ergebnis::ZuGross);
    QVERIFY(html.size() < 2 * GroessteSeite);
}

void VorlageTest::OnlyWhiteSpaceCountsAsEmpty_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<bool>("empty");
    QTest::newRow("nothing") << "" << true;
    QTest::newRow("break") << " <br>\n<BR /> <div></div><div class=x>" << true;
    QTest::newRow("no-break space") << "&nbsp;" << false;
    QTest::newRow("picture") << "<img src=a.png>" << false;
    QTest::newRow("other tag") << "<divider>" << false;
    QTest::newRow("open") << "<br" << false;
}

void VorlageTest::OnlyWhiteSpaceCountsAsEmpty()
{
    QFETCH(const QString, html);
    QFETCH(const bool, empty);
    QCOMPARE(IstLeeresFeld(html), empty);
}

PAUKFIX_TEST(VorlageTest)
#include "VorlageTest.moc"
