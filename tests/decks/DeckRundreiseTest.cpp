// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Deckausgabe.h"
#include "Deckkarten.h"
#include "RichText.h"
#include "SafeFile.h"
#include "TestProgram.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>

using namespace paukfix;
using namespace Qt::StringLiterals;

// Cards with everything in them, out as a deck and in again: equal, but for what the form cannot hold, and
// that is told.
class DeckRundreiseTest : public QObject
{
    Q_OBJECT

private slots:
    void APackageBringsEveryCardBack();
    void KvtmlBringsEveryTextBack();
    void AnEmptyBoxIsADeckToo();
    void DrawingsAndWebPicturesBecomeJpeg();
};

namespace {

constexpr int Anzahl = 1000;

// Random cards, the same in each run.
class Zufallskarten
{
public:
    explicit Zufallskarten(const QString &verzeichnis) : verzeichnis_(verzeichnis)
    {
        for (int i = 0; i < 5; ++i) {
            QImage bild(8, 8, QImage::Format_RGB32);
            bild.fill(QColor::fromHsv(i * 60, 200, 200));
            bild.save(verzeichnis_ + u"/Bild [%1] & Co.jpg"_s.arg(i));
            QByteArray welle("RIFF\x2c\0\0\0WAVEfmt "
                             "\x10\0\0\0\x01\0\x01\0\x40\x1f\0\0\x40\x1f\0\0\x01\0\x08\0data\x08\0\0\0",
                             44);
            welle += QByteArray(8, static_cast<char>(0x80 + i));
            WriteFileSynced(verzeichnis_ + u"/Ton %1%.wav"_s.arg(i), welle);
        }
    }

    CardRecord Karte(int nummer)
    {
        CardRecord karte;
        karte.FrageNr = nummer;
        karte.FachNr = Zahl(7);
        karte.FachLfdNr = nummer;
        const bool kreuze = Zahl(3) == 0;
        karte.Antworttyp = kreuze ? 2 : 1;
        Text(karte.Frage, karte.Frage_Klartext);
        Text(karte.Antwort_1, karte.Antwort_1_Klartext);
        if (kreuze) {
            Text(karte.Antwort_2, karte.Antwort_2_Klartext);
            if (Zahl(2) == 0)
                Text(karte.Antwort_4, karte.Antwort_4_Klartext);
            karte.Antwort_ch_1 = Zahl(2) == 0;
            karte.Antwort_ch_2 = Zahl(2) == 0;
            karte.Antwort_ch_4 = !karte.Antwort_4_Klartext.isEmpty() && Zahl(2) == 0;
        }
        if (Zahl(3) == 0)
            karte.Picture_9_Name = QStringList{u"Verben"_s, u"Erdkunde, Flüsse & Seen"_s, u"A::B"_s}[Zahl(3)];
        if (Zahl(4) == 0)
            karte.Picture_1_Name = u"Bild [%1] & Co.jpg"_s.arg(Zahl(5));
        if (Zahl(4) == 0)
            karte.Picture_2_Name = u"Bild [%1] & Co.jpg"_s.arg(Zahl(5));
        if (Zahl(4) == 0)
            karte.Picture_6_Name = u"Ton %1%.wav"_s.arg(Zahl(5));
        if (Zahl(4) == 0)
            karte.Picture_7_Name = u"Ton %1%.wav"_s.arg(Zahl(5));
        if (Zahl(10) == 0)
            karte.Picture_3_Name = u"Bild [0] & Co.jpg"_s;
        return karte;
    }

private:
    int Zahl(int unter) { return static_cast<int>(zufall_.bounded(unter)); }

    QString Wort()
    {
        static const QStringList woerter{
            u"Straße"_s,        u"der Fluß"_s,     u"a < b"_s,     u"&amp;"_s, u"<b>kein Tag</b>"_s,
            u"[sound:x.mp3]"_s, u"{{c1::x}}"_s,    u"日本語"_s,    u"😀"_s,     u"\"so\""_s,
            u"x\u00A0y"_s,      u"zwei  Blanks"_s, u"\\(x^2\\)"_s, u"100 %"_s, u"{\\rtf1 x}"_s,
            u"Hinweis: ja"_s,   u"\tTab"_s,        u"'einfach'"_s};
        return woerter[Zahl(static_cast<int>(woerter.size()))];
    }

    // Formatted or not, of one line or some; plain texts may have blanks at their edges.
    void Text(QString &reich, QString &klar)
    {
        if (Zahl(2) == 0) {
            QString text = Wort();
            for (int i = Zahl(3); i > 0; --i)
                text += (Zahl(2) == 0 ? u"\r\n"_s : u" "_s) + Wort();
            if (Zahl(8) == 0)
                text += u"  "_s;
            reich = klar = text;
            if (IsRtf(reich))
                reich = klar = u"x "_s + text;
            return;
        }
        QTextDocument dokument;
        QTextOption option = dokument.defaultTextOption();
        option.setTabStopDistance(48); // half an inch, as texts have it that say nothing of it
        dokument.setDefaultTextOption(option);
        QTextCursor cursor(&dokument);
        for (int zeile = Zahl(3); zeile >= 0; --zeile) {
            QTextBlockFormat block;
            block.setAlignment(QList<Qt::Alignment>{Qt::AlignLeft, Qt::AlignLeft, Qt::AlignHCenter,
                                                    Qt::AlignRight}[Zahl(4)]);
            cursor.setBlockFormat(block);
            for (int teil = Zahl(4); teil >= 0; --teil) {
                QTextCharFormat format;
                if (Zahl(3) == 0)
                    format.setFontWeight(QFont::Bold);
                if (Zahl(3) == 0)
                    format.setFontItalic(true);
                if (Zahl(4) == 0)
                    format.setFontUnderline(true);
                if (Zahl(6) == 0)
                    format.setFontStrikeOut(true);
                if (Zahl(4) == 0)
                    format.setForeground(QColor(200, 0, 40));
                if (Zahl(4) == 0)
                    format.setFontPointSize(8 + Zahl(20));
                if (Zahl(5) == 0)
                    format.setFontFamilies({u"DejaVu Serif"_s});
                if (Zahl(6) == 0)
                    format.setVerticalAlignment(Zahl(2) == 0 ? QTextCharFormat::AlignSuperScript
                                                             : QTextCharFormat::AlignSubScript);
                cursor.insertText(Wort(), format);
            }
            if (zeile > 0)
                cursor.insertBlock();
        }
        if (Zahl(100) == 0) { // as long as a text of the box gets
            QString lang;
            while (lang.size() < 32'000)
                lang += Wort() + u' ';
            cursor.insertText(lang + Wort());
        }
        reich = ToRtf(dokument);
        klar = PlainText(dokument);
    }

    QString verzeichnis_;
    QRandomGenerator zufall_{20261122};
};

// A text as it looks, whatever is said how.
QString Aussehen(const QString &reich)
{
    QTextDocument dokument;
    SetRichText(dokument, reich);
    return ToRtf(dokument);
}

struct Reise
{
    Reise()
    {
        QDir().mkpath(hier);
        QDir().mkpath(dort);
        Zufallskarten quelle(hier);
        for (int i = 1; i <= Anzahl; ++i)
            karten.push_back(quelle.Karte(i));
    }

    Deckausgabe Deck()
    {
        return {.titel = u"Reise"_s,
                .medien = hier,
                .anzahl = Anzahl,
                .naechste = [this, i = std::size_t{0}](CardRecord &karte) mutable {
                    if (i >= karten.size())
                        return false;
                    karte = karten[i++];
                    return true;
                }};
    }

    // All cards of a deck as they would be stored, their media in `dort`.
    std::vector<CardRecord> Zurueck(const QString &pfad)
    {
        const auto quelle = DeckOeffnen(pfad);
        const DirectoryLock ort(dort);
        Beilagen beilagen(ort, u"neu.pzb"_s);
        Deckkarten leser(*quelle, {.thema = Deckthema::Schlagwoerter, .faecher = true}, beilagen, wieder);
        std::vector<CardRecord> gelesen;
        QSet<QString> genannt;
        while (leser.Next()) {
            CardRecord karte;
            for (const int spalte : leser.Columns()) {
                CopiedValue wert;
                leser.Read(spalte, wert);
                const auto &feld = CardColumns()[static_cast<std::size_t>(spalte)].member;
                if (const auto *text = std::get_if<QString CardRecord::*>(&feld))
                    karte.**text = QString::fromStdString(
                        wert.text.c_str() && wert.kind == CopiedValue::Kind::Text ? wert.text
                                                                                  : std::string());
                else if (const auto *zahl = std::get_if<double CardRecord::*>(&feld))
                    karte.**zahl = wert.kind == CopiedValue::Kind::Number ? wert.number : 0;
                else
                    karte.*std::get<bool CardRecord::*>(feld) =
                        wert.kind == CopiedValue::Kind::Number && wert.number != 0;
            }
            karte.FachNr = leser.Place().fach;
            gelesen.push_back(karte);
            for (const QString *name :
                 {&karte.Picture_1_Name, &karte.Picture_2_Name, &karte.Picture_6_Name, &karte.Picture_7_Name})
                genannt << *name;
        }
        if (leser.Hindernis())
            throw StoreError(*leser.Hindernis());
        beilagen.Hinlegen();
        beilagen.Abschliessen(genannt);
        return gelesen;
    }

    QByteArray Bytes(const QString &wo, const QString &name) const
    {
        return name.isEmpty() ? QByteArray() : ReadFile(wo + u'/' + name, 1'000'000);
    }

    QTemporaryDir verzeichnis;
    QString hier = verzeichnis.filePath(u"hier"_s);
    QString dort = verzeichnis.filePath(u"dort"_s);
    std::vector<CardRecord> karten;
    Deckbericht bericht; // of what goes out
    Deckbericht wieder;  // of what comes in
};

} // namespace

void DeckRundreiseTest::APackageBringsEveryCardBack()
{
    Reise reise;
    const QString pfad = reise.verzeichnis.filePath("reise.apkg");
    ApkgSchreiben(pfad, reise.Deck(), reise.bericht);
    const std::vector<CardRecord> zurueck = reise.Zurueck(pfad);
    QCOMPARE(zurueck.size(), reise.karten.size());
    int falsche = 0;
    for (std::size_t i = 0; i < zurueck.size(); ++i) {
        const CardRecord &soll = reise.karten[i];
        const CardRecord &ist = zurueck[i];
        falsche += soll.Picture_3_Name.isEmpty() ? 0 : 1;
        QCOMPARE(ist.Antworttyp, soll.Antworttyp);
        QCOMPARE(ist.FachNr, soll.FachNr);
        QCOMPARE(ist.Picture_9_Name, soll.Picture_9_Name);
        for (const auto feld : {&CardRecord::Frage_Klartext, &CardRecord::Antwort_1_Klartext,
                                &CardRecord::Antwort_2_Klartext, &CardRecord::Antwort_4_Klartext})
            QCOMPARE(ist.*feld, soll.*feld);
        for (const auto feld :
             {&CardRecord::Frage, &CardRecord::Antwort_1, &CardRecord::Antwort_2, &CardRecord::Antwort_4})
            QCOMPARE(Aussehen(ist.*feld), Aussehen(soll.*feld));
        for (const auto feld :
             {&CardRecord::Antwort_ch_1, &CardRecord::Antwort_ch_2, &CardRecord::Antwort_ch_4})
            QCOMPARE(ist.*feld, soll.*feld);
        for (const auto feld : {&CardRecord::Picture_1_Name, &CardRecord::Picture_2_Name,
                                &CardRecord::Picture_6_Name, &CardRecord::Picture_7_Name})
            QVERIFY(reise.Bytes(reise.dort, ist.*feld) == reise.Bytes(reise.hier, soll.*feld));
    }
    QCOMPARE(reise.bericht.Zahl(Deckrest::FalschMedium), falsche);
    QCOMPARE(reise.bericht.Summe(), falsche); // nothing else is lost
}

void DeckRundreiseTest::KvtmlBringsEveryTextBack()
{
    Reise reise;
    const QString pfad = reise.verzeichnis.filePath("reise.kvtml");
    KvtmlSchreiben(pfad, reise.verzeichnis.filePath("reise-Medien"), "reise-Medien", reise.Deck(),
                   reise.bericht);
    const std::vector<CardRecord> zurueck = reise.Zurueck(pfad);
    QCOMPARE(zurueck.size(), reise.karten.size());
    int nichtEine = 0;
    for (std::size_t i = 0; i < zurueck.size(); ++i) {
        const CardRecord &soll = reise.karten[i];
        const CardRecord &ist = zurueck[i];
        QCOMPARE(ist.Frage_Klartext, soll.Frage_Klartext);
        QCOMPARE(ist.FachNr, soll.FachNr);
        QCOMPARE(ist.Picture_9_Name, soll.Picture_9_Name);
        for (const auto feld : {&CardRecord::Picture_1_Name, &CardRecord::Picture_2_Name,
                                &CardRecord::Picture_6_Name, &CardRecord::Picture_7_Name})
            QVERIFY(reise.Bytes(reise.dort, ist.*feld) == reise.Bytes(reise.hier, soll.*feld));
        if (soll.Antworttyp == 1) {
            QCOMPARE(ist.Antworttyp, 1.0);
            QCOMPARE(ist.Antwort_1_Klartext, soll.Antwort_1_Klartext);
            continue;
        }
        QStringList richtige;
        QStringList falsche;
        (soll.Antwort_ch_1 ? richtige : falsche) << soll.Antwort_1_Klartext;
        (soll.Antwort_ch_2 ? richtige : falsche) << soll.Antwort_2_Klartext;
        if (!soll.Antwort_4_Klartext.isEmpty())
            (soll.Antwort_ch_4 ? richtige : falsche) << soll.Antwort_4_Klartext;
        nichtEine += richtige.size() == 1 && !falsche.isEmpty() ? 0 : 1;
        if (richtige.size() != 1 || falsche.isEmpty())
            continue;
        QCOMPARE(ist.Antworttyp, 2.0);
        QVERIFY(ist.Antwort_ch_1 && !ist.Antwort_ch_2 && !ist.Antwort_ch_3);
        QCOMPARE(ist.Antwort_1_Klartext, richtige.front());
        QCOMPARE(ist.Antwort_2_Klartext, falsche.value(0));
        QCOMPARE(ist.Antwort_3_Klartext, falsche.value(1));
    }
    QCOMPARE(reise.bericht.Zahl(Deckrest::MehrereRichtig), nichtEine);
    QVERIFY(reise.bericht.Zahl(Deckrest::Format) > Anzahl / 2);
}

void DeckRundreiseTest::AnEmptyBoxIsADeckToo()
{
    Reise reise;
    reise.karten.clear();
    for (const char *name : {"leer.apkg", "leer.kvtml"}) {
        const QString pfad = reise.verzeichnis.filePath(name);
        if (pfad.endsWith(".apkg"))
            ApkgSchreiben(pfad, reise.Deck(), reise.bericht);
        else
            KvtmlSchreiben(pfad, {}, {}, reise.Deck(), reise.bericht);
        QVERIFY(reise.Zurueck(pfad).empty());
    }
}

// The toolkit's plugins read them. What they cannot read is told by its name.
void DeckRundreiseTest::DrawingsAndWebPicturesBecomeJpeg()
{
    Reise reise;
    WriteFileSynced(reise.hier + "/kreis.svg",
                    R"(<svg xmlns="http://www.w3.org/2000/svg" width="40" height="20">)"
                    R"(<rect width="40" height="20" fill="#c00"/></svg>)");
    QImage blau(30, 30, QImage::Format_RGB32);
    blau.fill(Qt::blue);
    QVERIFY(blau.save(reise.hier + "/himmel.webp", "webp"));
    WriteFileSynced(reise.hier + "/kaputt.webp", "RIFF\x10\0\0\0WEBPVP8 ");
    WriteFileSynced(reise.hier + "/boese.svg",
                    R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9">)"
                    R"(<image href="file:///etc/hostname" width="9" height="9"/></svg>)");
    reise.karten.clear();
    for (const char *name : {"kreis.svg", "himmel.webp", "kaputt.webp", "boese.svg"}) {
        CardRecord karte;
        karte.Antworttyp = 1;
        karte.Frage = karte.Frage_Klartext = QString::fromUtf8(name);
        karte.Antwort_1 = karte.Antwort_1_Klartext = "x";
        karte.Picture_1_Name = QString::fromUtf8(name);
        reise.karten.push_back(karte);
    }
    const QString pfad = reise.verzeichnis.filePath("bilder.apkg");
    ApkgSchreiben(pfad, reise.Deck(), reise.bericht);
    const std::vector<CardRecord> zurueck = reise.Zurueck(pfad);
    QCOMPARE(zurueck.size(), 4U);
    QCOMPARE(zurueck[0].Picture_1_Name, "kreis.jpg");
    QCOMPARE(zurueck[1].Picture_1_Name, "himmel.jpg");
    for (const char *name : {"kreis.jpg", "himmel.jpg"})
        QVERIFY(reise.Bytes(reise.dort, name).startsWith("\xFF\xD8\xFF"));
    const QImage kreis(reise.dort + "/kreis.jpg");
    QCOMPARE(kreis.size(), QSize(600, 300)); // large enough to be seen
    QVERIFY(qRed(kreis.pixel(300, 150)) > 180 && qBlue(kreis.pixel(300, 150)) < 40);
    QVERIFY(qBlue(QImage(reise.dort + "/himmel.jpg").pixel(15, 15)) > 200);
    QCOMPARE(zurueck[2].Picture_1_Name, "");
    QCOMPARE(zurueck[3].Picture_1_Name, "");
    QCOMPARE(reise.wieder.Zahl(Deckrest::MediumUnlesbar), 2);
    QVERIFY(reise.wieder.Text().contains("kaputt.webp"));
    QVERIFY(reise.wieder.Text().contains("boese.svg"));
}

PAUKFIX_TEST(DeckRundreiseTest)
#include "DeckRundreiseTest.moc"
