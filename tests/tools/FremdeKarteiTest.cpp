// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FremdeKartei.h"

#include "Bild.h"
#include "TestProgram.h"
#include "Werkstatt.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using namespace paukfix;

// Decks of other programs, read into boxes on the disk by the real window.
class FremdeKarteiTest : public QObject
{
    Q_OBJECT

private slots:
    void ADeckBecomesANewBoxWithItsPicturesAndSounds();
    void ADeckJoinsTheOpenBoxAndCanBeTakenBack();
    void CardsThatTheBoxHasAreLeftOut();
    void TopicsAndCompartmentsAreAsChosen();
    void TagsThatATopicCannotHoldAreTold();
    void WhatIsInADeckIsShownWhole();
    void WhatStaysBehindCanBeReadBefore();
    void ADeckMadeToHarmIsRefusedWithASentence_data();
    void ADeckMadeToHarmIsRefusedWithASentence();
    void WhereItIsCancelledNothingHasChanged_data();
    void WhereItIsCancelledNothingHasChanged();
    void ADiskErrorOfTheDeckLeavesTheBoxAsItWas();
    void NamesThatClashAreNumbered();
    void AnExistingBoxIsNotReplacedWithoutBeingAsked();
    void EveryControlHasItsName();
};

namespace {

QString Probe(const QString &name)
{
    return QStringLiteral(DECKS_DIR "/") + name;
}

CardRecord Karte(int nummer, const QString &frage)
{
    CardRecord karte;
    karte.FrageNr = nummer;
    karte.FachLfdNr = nummer;
    karte.Antworttyp = 1;
    karte.Frage = karte.Frage_Klartext = frage;
    karte.Antwort_1 = karte.Antwort_1_Klartext = u"alt"_s;
    return karte;
}

struct Buehne : Werkstatt
{
    // The window with a deck that it has looked through.
    void Zeigen(const QString &datei)
    {
        fenster = std::make_unique<FremdeKartei>(oeffner, Alle(), nullptr, datei);
        fenster->show();
        QTRY_VERIFY(!fenster->findChild<QLabel *>(u"Inhalt"_s)->text().startsWith(u"Noch"_s));
    }

    QString Vorhaben() const { return fenster->findChild<QLabel *>(u"Vorhaben"_s)->text(); }

    QString Inhalt() const { return fenster->findChild<QLabel *>(u"Inhalt"_s)->text(); }

    void Klick(const QString &name) const
    {
        QTest::mouseClick(fenster->findChild<QPushButton *>(name), Qt::LeftButton);
    }

    QString Gesagt() const
    {
        QString alles;
        for (const auto &gesagt : meldungen.gezeigt)
            alles += gesagt.text + u'\n';
        return alles + meldungen.berichte.join(u'\n');
    }

    std::unique_ptr<FremdeKartei> fenster;
};

} // namespace

void FremdeKarteiTest::ADeckBecomesANewBoxWithItsPicturesAndSounds()
{
    Buehne b;
    b.Zeigen(Probe("basic.apkg"));
    QVERIFY2(b.Inhalt().contains("40 Karten"), qPrintable(b.Inhalt()));
    QVERIFY(b.Inhalt().contains("der Baum – tree"));
    QVERIFY(!b.fenster->findChild<QRadioButton *>("optOffen")->isEnabled());
    const auto *ziel = b.fenster->findChild<QLineEdit *>("lblZiel");
    QCOMPARE(ziel->text(), b.Pfad("basic.pzb"));
    b.Klick("cmdOK");
    QVERIFY(!b.fenster->isVisible());
    QCOMPARE(b.store.CurrentFileName, "basic.pzb");
    QCOMPARE(b.store.Karten().RecordCount(), 40);
    QVERIFY2(b.Gesagt().contains("40 Karten eingelesen"), qPrintable(b.Gesagt()));
    QVERIFY(b.ZaehlerStimmen());
    // PNG and MP3 have become what a card can show and play.
    for (const char *name : {"schach.jpg", "flaeche.jpg", "ton.wav", "melodie.wav"})
        QVERIFY2(b.Dateien().contains(name), name);
    QVERIFY(!BildLesen(b.Pfad("schach.jpg")).isNull());
    QCOMPARE(b.Bytes("melodie.wav").left(4), QByteArray("RIFF"));
    const QList<CardRecord> karten = b.Karten();
    QCOMPARE(karten[0].Frage_Klartext, "der Baum");
    QCOMPARE(karten[0].Antwort_1, "tree");
    QCOMPARE(karten[0].Picture_9_Name, "Natur");
    int mitBild = 0;
    for (const CardRecord &karte : karten)
        mitBild += karte.Picture_1_Name == "schach.jpg" ? 1 : 0;
    QCOMPARE(mitBild, 2);
}

void FremdeKarteiTest::ADeckJoinsTheOpenBoxAndCanBeTakenBack()
{
    Buehne b;
    b.Oeffnen({Karte(1, "meine Frage")});
    const auto vorher = b.Karten();
    b.Zeigen(Probe("schema18-zstd.apkg"));
    QVERIFY(b.fenster->findChild<QRadioButton *>("optOffen")->isChecked());
    b.Klick("cmdOK");
    QCOMPARE(b.store.CurrentFileName, "offen.pzb");
    QCOMPARE(b.store.Karten().RecordCount(), 14);
    QVERIFY(b.store.schritte.Zurueckzunehmen().contains("Einlesen von „schema18-zstd.apkg“"));
    b.store.schritte.Zuruecknehmen();
    QCOMPARE(b.store.Karten().RecordCount(), 1);
    QCOMPARE(b.store.FachInfo[0].Anzahl, 1);
    b.store.schritte.Wiederholen();
    QCOMPARE(b.store.Karten().RecordCount(), 14);
    b.store.schritte.Zuruecknehmen();
    QVERIFY(b.Karten() == vorher);
}

void FremdeKarteiTest::CardsThatTheBoxHasAreLeftOut()
{
    Buehne b;
    b.Oeffnen({Karte(1, "meine Frage"), Karte(2, "der Baum")});
    b.Zeigen(Probe("basic.apkg"));
    QCOMPARE(b.Vorhaben(),
             "40 Karten kommen in die geöffnete Kartei, 1 mit anderer Antwort; nicht alles davon kommt mit.");
    b.Klick("cmdOK");
    QCOMPARE(b.store.Karten().RecordCount(), 42);
    const QStringList dateien = b.Dateien();
    b.meldungen.gezeigt.clear();
    b.meldungen.berichte.clear();
    b.Zeigen(Probe("basic.apkg"));
    // One has no words, and what its picture will be called is not known yet.
    QCOMPARE(b.Vorhaben(),
             "40 Karten kommen in die geöffnete Kartei, 39 gibt es dort schon; nicht alles davon kommt mit.");
    QTest::mouseClick(b.fenster->findChild<QRadioButton *>("optNeu"), Qt::LeftButton, {}, QPoint(8, 12));
    QCOMPARE(b.Vorhaben(), "40 Karten kommen in eine neue Kartei; nicht alles davon kommt mit.");
    QTest::mouseClick(b.fenster->findChild<QRadioButton *>("optOffen"), Qt::LeftButton, {}, QPoint(8, 12));
    QCOMPARE(b.fenster->findChild<QComboBox *>("cmbVorhandene")->currentText(), "auslassen");
    b.Klick("cmdOK");
    QCOMPARE(b.store.Karten().RecordCount(), 42);
    QVERIFY2(b.Gesagt().contains("40 Karten gab es schon"), qPrintable(b.Gesagt()));
    QCOMPARE(b.Dateien(), dateien);
}

void FremdeKarteiTest::TopicsAndCompartmentsAreAsChosen()
{
    Buehne b;
    b.Zeigen(Probe("schema11-rich.apkg"));
    auto *thema = b.fenster->findChild<QComboBox *>("cmbThema");
    QCOMPARE(thema->currentText(), "die Schlagwörter");
    thema->setCurrentText("der Name des Stapels");
    QTest::mouseClick(b.fenster->findChild<QCheckBox *>("chkFaecher"), Qt::LeftButton, {}, QPoint(8, 12));
    QVERIFY(b.fenster->findChild<QCheckBox *>("chkFaecher")->isChecked());
    b.Klick("cmdOK");
    const QList<CardRecord> karten = b.Karten();
    const auto finde = [&](const QString &frage) {
        for (const CardRecord &karte : karten)
            if (karte.Frage_Klartext == frage)
                return karte;
        return CardRecord();
    };
    QCOMPARE(finde("die Zitrone").FachNr, 6.0);
    QCOMPARE(finde("die Zitrone").Picture_9_Name, "Sprachen::Englisch");
    QCOMPARE(finde("ausgesetzt, 45 Tage").FachNr, 4.0);
    QCOMPARE(finde("im Lernen").FachNr, 1.0);
    QCOMPARE(finde("im Auswahlstapel").Picture_9_Name, "Sachkunde::Chemie & Physik");
    QVERIFY(b.ZaehlerStimmen());
}

void FremdeKarteiTest::TagsThatATopicCannotHoldAreTold()
{
    class EineKarte final : public Deckquelle
    {
    public:
        Deckinhalt Inhalt() const override { return {.titel = {}, .art = {}, .karten = 1, .stapel = {}}; }

        bool Naechste(Deckkarte &karte, Deckbericht &) override
        {
            if (gelesen_++ > 0)
                return false;
            karte = {};
            karte.frage = {u"f"_s, u"f"_s};
            karte.antworten.push_back({.text = {u"a"_s, u"a"_s}});
            for (int i = 100; i < 160; ++i)
                karte.schlagwoerter << u"Wort%1"_s.arg(i);
            return true;
        }

        int Gelesen() const override { return gelesen_; }

        void VonVorn() override { gelesen_ = 0; }

        std::optional<QByteArray> Medium(const QString &) override { return std::nullopt; }

    private:
        int gelesen_ = 0;
    };

    Buehne b;
    b.Oeffnen({});
    EineKarte quelle;
    Eingelesenes ergebnis;
    QCOMPARE(FremdEinlesen({b.store, b.oeffner, b.meldungen}, quelle, u"x"_s, {}, ergebnis),
             Ausgang::Gelungen);
    const QString thema = b.Karten().value(0).Picture_9_Name;
    QVERIFY(thema.startsWith(u"Wort100, Wort101, "_s));
    QVERIFY2(thema.size() <= 255 && thema.size() > 240, qPrintable(thema));
    QVERIFY(thema.endsWith(u"Wort%1"_s.arg(100 + thema.count(u','))));
    QVERIFY2(ergebnis.rest.contains(u"mehr Schlagwörter"_s), qPrintable(ergebnis.rest));
}

void FremdeKarteiTest::WhatIsInADeckIsShownWhole()
{
    Buehne b;
    b.Oeffnen({});
    b.Zeigen(Probe("kvtml/small2.kvtml"));
    const auto *inhalt = b.fenster->findChild<QLabel *>(u"Inhalt"_s);
    QVERIFY(inhalt->text().contains(u"\nErste Karte: "_s));
    const auto hoch = [&] { return inhalt->heightForWidth(inhalt->width()); };
    QVERIFY(hoch() > 2 * inhalt->fontMetrics().height()); // its title makes a third line
    QTRY_VERIFY(inhalt->height() >= hoch());
    QVERIFY(!b.fenster->findChild<QLabel *>(u"Erklärung(0)"_s)->isVisible());
}

void FremdeKarteiTest::WhatStaysBehindCanBeReadBefore()
{
    Buehne b;
    b.Zeigen(Probe("schema11-rich.apkg"));
    b.Klick("cmdRest");
    QCOMPARE(b.meldungen.berichte.size(), 1);
    QVERIFY(b.meldungen.berichte.front().contains("https://example.invalid/a.png"));
    QVERIFY(b.meldungen.berichte.front().contains("weil ihre Frageseite leer ist: 3"));
    QVERIFY(b.fenster->isVisible());
    QVERIFY(b.Dateien().isEmpty()); // nothing is written by looking
}

void FremdeKarteiTest::ADeckMadeToHarmIsRefusedWithASentence_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"zipbomb-deflate.apkg", "zipbomb-zstd.apkg", "huge-field.apkg", "truncated.apkg", "bad-crc.apkg",
          "sqlite-damaged-pages.apkg", "sqlite-endless-view.apkg", "kvtml-entity-bomb.kvtml",
          "kvtml-deep-lessons-20000.kvtml", "zip-duplicate-names.apkg"})
        QTest::newRow(name) << name;
}

void FremdeKarteiTest::ADeckMadeToHarmIsRefusedWithASentence()
{
    QFETCH(const QString, name);
    Buehne b;
    b.Oeffnen({Karte(1, "meine Frage")});
    const QStringList vorher = b.Dateien();
    const QByteArray bytes = b.Bytes("offen.pzb");
    b.Zeigen(Probe("hostile/" + name));
    QVERIFY2(b.Inhalt().endsWith('.') && b.Inhalt().size() > 20, qPrintable(b.Inhalt()));
    QVERIFY(!b.fenster->findChild<QPushButton *>("cmdOK")->isEnabled());
    QCOMPARE(b.Dateien(), vorher);
    QVERIFY(b.Bytes("offen.pzb") == bytes);
}

void FremdeKarteiTest::WhereItIsCancelledNothingHasChanged_data()
{
    QTest::addColumn<bool>("neu");
    QTest::newRow("new box") << true;
    QTest::newRow("open box") << false;
}

void FremdeKarteiTest::WhereItIsCancelledNothingHasChanged()
{
    QFETCH(const bool, neu);
    Buehne b;
    b.Oeffnen({Karte(1, "meine Frage")});
    const auto vorher = b.Karten();
    const QStringList dateien = b.Dateien();
    const auto quelle = DeckOeffnen(Probe("basic.apkg"));
    Einlesewahl wahl;
    if (neu)
        wahl.neueKartei = b.Pfad("neu.pzb");
    Eingelesenes ergebnis;
    Werkbank bank{b.store, b.oeffner, b.meldungen};
    // Behind the last picture and sound, so that all of them were made before.
    int karten = 0;

    class Abbrechende final : public Deckquelle
    {
    public:
        Abbrechende(Deckquelle &echte, int &zahl) : echte_(echte), zahl_(zahl) {}

        Deckinhalt Inhalt() const override { return echte_.Inhalt(); }

        bool Naechste(Deckkarte &karte, Deckbericht &bericht) override
        {
            if (++zahl_ > 35)
                throw StoreError(Fehler::Abgebrochen, u"Das Einlesen wurde abgebrochen."_s);
            return echte_.Naechste(karte, bericht);
        }

        int Gelesen() const override { return echte_.Gelesen(); }

        void VonVorn() override { echte_.VonVorn(); }

        std::optional<QByteArray> Medium(const QString &name) override { return echte_.Medium(name); }

    private:
        Deckquelle &echte_;
        int &zahl_;
    };

    Abbrechende abbrechende(*quelle, karten);
    QCOMPARE(FremdEinlesen(bank, abbrechende, u"basic.apkg"_s, wahl, ergebnis), Ausgang::Gescheitert);
    QVERIFY2(b.Gesagt().contains("abgebrochen"), qPrintable(b.Gesagt()));
    QCOMPARE(b.Dateien(), dateien);
    QCOMPARE(b.store.CurrentFileName, "offen.pzb");
    QVERIFY(b.store.IsOpen());
    QVERIFY(b.Karten() == vorher);
    QVERIFY(b.ZaehlerStimmen());
}

void FremdeKarteiTest::ADiskErrorOfTheDeckLeavesTheBoxAsItWas()
{
    Buehne b;
    b.Oeffnen({Karte(1, "meine Frage")});
    const auto vorher = b.Karten();
    b.Zeigen(Probe("basic.apkg"));
    b.fenster->findChild<QRadioButton *>("optNeu")->setChecked(true);
    b.fenster->findChild<QLineEdit *>("lblZiel")->setText(b.Pfad("gibt/es/nicht.pzb"));
    b.Klick("cmdOK");
    QVERIFY(b.fenster->isVisible());
    QVERIFY(MeldetFehler(b.meldungen));
    QVERIFY(b.store.IsOpen());
    QVERIFY(b.Karten() == vorher);
}

void FremdeKarteiTest::NamesThatClashAreNumbered()
{
    Buehne b;
    b.Schreiben("ton.wav", "mein Ton");
    b.Zeigen(Probe("basic.apkg"));
    b.Klick("cmdOK");
    QCOMPARE(b.Bytes("ton.wav"), QByteArray("mein Ton"));
    QCOMPARE(b.Bytes("ton-2.wav").left(4), QByteArray("RIFF"));
    int genannt = 0;
    for (const CardRecord &karte : b.Karten())
        genannt += karte.Picture_6_Name == "ton-2.wav" || karte.Picture_7_Name == "ton-2.wav" ? 1 : 0;
    QCOMPARE(genannt, 2);
}

void FremdeKarteiTest::AnExistingBoxIsNotReplacedWithoutBeingAsked()
{
    Buehne b;
    b.Schreiben("basic.pzb", "meines");
    b.Zeigen(Probe("basic.apkg"));
    auto *ziel = b.fenster->findChild<QLineEdit *>("lblZiel");
    QCOMPARE(ziel->text(), b.Pfad("basic-2.pzb"));
    ziel->setText(b.Pfad("basic.pzb"));
    b.Klick("cmdOK");
    QVERIFY(b.fenster->isVisible());
    QCOMPARE(b.Bytes("basic.pzb"), QByteArray("meines"));
}

void FremdeKarteiTest::EveryControlHasItsName()
{
    Buehne b;
    b.Zeigen(Probe("basic.apkg"));
    CheckNames(*b.fenster);
}

PAUKFIX_TEST(FremdeKarteiTest)
#include "FremdeKarteiTest.moc"
