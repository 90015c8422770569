// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Karteianhaengen.h"
#include "Karteispiegeln.h"
#include "ResourceLimit.h"
#include "TestProgram.h"
#include "Themaausfiltern.h"
#include "Werkstatt.h"

#include <QCheckBox>
#include <QListWidget>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// Beside the box's directory another one.
struct ZweiOrdner : Werkstatt
{
    QString Dort(const QString &name) const { return anderswo.filePath(name); }

    QByteArray BytesDort(const QString &name) const
    {
        return QFile::exists(Dort(name)) ? ReadFile(Dort(name), 1 << 20) : QByteArray("missing");
    }

    QStringList DateienDort() const
    {
        return QDir(anderswo.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir anderswo;
};

CardRecord Karte(int nummer, const QString &bild, const QString &ton = {}, const QString &thema = {})
{
    CardRecord karte = MakeCard(nummer, 0, nummer);
    karte.Picture_1_Name = bild;
    karte.Picture_8_Name = ton;
    karte.Picture_9_Name = thema;
    return karte;
}

QString Angebot(const QWidget &fenster)
{
    const auto *wahl = fenster.findChild<QCheckBox *>("chkMedien");
    return wahl->isEnabled() ? wahl->text().remove(u'&') : QString();
}

} // namespace

// Pictures and sounds that come along with their cards to another directory.
class MedienTest : public QObject
{
    Q_OBJECT

private slots:
    void AppendedCardsBringTheirFiles();
    void AppendingAgainCopiesNothing();
    void WithoutTheTickNothingIsCopied();
    void NothingIsOfferedWhereNothingWouldBeParted();
    void MirroredBoxHasItsFilesBesideIt();
    void FilteredBoxHasOnlyTheFilesOfItsTopics();
    void WhatIsMissingIsReported();
    void CancellingLeavesBoxesAndDirectories();
    void AFullDiskLeavesBoxesAndDirectories();
};

void MedienTest::AppendedCardsBringTheirFiles()
{
    ZweiOrdner w;
    WriteFileSynced(w.Dort("hund.jpg"), "fremder Hund");
    WriteFileSynced(w.Dort("Wuff.wav"), "Klang");
    w.Schreiben("hund.jpg", "eigener Hund");
    MakeCardFile(w.Dort("quelle.pzb"), {Karte(1, "hund.jpg", "wuff.wav"), Karte(2, "hund.jpg")});
    w.Oeffnen({Karte(1, "hund.jpg")});
    Karteianhängen dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    QCOMPARE(Angebot(dialog), "");
    Hand(dialog).Ersetze("lblDateiname", w.Dort("quelle.pzb"));
    QCOMPARE(Angebot(dialog), "Bilder und Töne mitkopieren (2 Dateien, 17 Bytes)");
    Hand(dialog).Klick("cmdOK");
    QVERIFY(w.meldungen.gezeigt.isEmpty());
    QVERIFY(w.meldungen.berichte.isEmpty());
    QCOMPARE(Hand(dialog).Text("Ergebnis"), "2 Karten angehängt, 2 Dateien kopiert");
    QCOMPARE(w.Bytes("hund.jpg"), "eigener Hund");
    QCOMPARE(w.Bytes("hund-2.jpg"), "fremder Hund");
    QCOMPARE(w.Bytes("wuff.wav"), "Klang");
    QCOMPARE(w.Dateien(), (QStringList{"hund-2.jpg", "hund.jpg", "offen.pzb", "wuff.wav"}));
    const QList<CardRecord> karten = w.Karten();
    QCOMPARE(karten[0].Picture_1_Name, "hund.jpg");
    QCOMPARE(karten[1].Picture_1_Name, "hund-2.jpg");
    QCOMPARE(karten[1].Picture_8_Name, "wuff.wav");
    QCOMPARE(karten[2].Picture_1_Name, "hund-2.jpg");
    QCOMPARE(w.DateienDort(), (QStringList{"Wuff.wav", "hund.jpg", "quelle.pzb"}));
}

void MedienTest::AppendingAgainCopiesNothing()
{
    ZweiOrdner w;
    WriteFileSynced(w.Dort("hund.jpg"), "fremder Hund");
    w.Schreiben("hund.jpg", "eigener Hund");
    MakeCardFile(w.Dort("quelle.pzb"), {Karte(1, "hund.jpg")});
    w.Oeffnen({});
    Karteianhängen dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    for (int i = 0; i < 2; ++i) {
        Hand(dialog).Ersetze("lblDateiname", w.Dort("quelle.pzb"));
        Hand(dialog).Klick("cmdOK");
    }
    QCOMPARE(Hand(dialog).Text("Ergebnis"), "1 Karte angehängt");
    QCOMPARE(w.Dateien(), (QStringList{"hund-2.jpg", "hund.jpg", "offen.pzb"}));
    QCOMPARE(w.Karten()[1].Picture_1_Name, "hund-2.jpg");
}

void MedienTest::WithoutTheTickNothingIsCopied()
{
    ZweiOrdner w;
    WriteFileSynced(w.Dort("hund.jpg"), "Hund");
    MakeCardFile(w.Dort("quelle.pzb"), {Karte(1, "hund.jpg")});
    w.Oeffnen({});
    Karteianhängen dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Ersetze("lblDateiname", w.Dort("quelle.pzb"));
    Hand(dialog).Klick("chkMedien");
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(w.Dateien(), QStringList{"offen.pzb"});
    QCOMPARE(w.Karten()[0].Picture_1_Name, "hund.jpg");
}

void MedienTest::NothingIsOfferedWhereNothingWouldBeParted()
{
    ZweiOrdner w;
    w.Schreiben("hund.jpg", "Hund");
    MakeCardFile(w.Pfad("daneben.pzb"), {Karte(1, "hund.jpg")});
    MakeCardFile(w.Dort("ohne.pzb"), {Karte(1, {})});
    w.Oeffnen({Karte(1, "hund.jpg")});
    Karteianhängen anhaengen(w.oeffner, w.Alle());
    Hand(anhaengen).Zeigen();
    for (const QString &quelle : {w.Pfad("daneben.pzb"), w.Dort("ohne.pzb"), w.Dort("fehlt.pzb")}) {
        Hand(anhaengen).Ersetze("lblDateiname", quelle);
        QCOMPARE(Angebot(anhaengen), "");
    }
    anhaengen.close();
    Karteispiegeln spiegeln(w.oeffner, w.Alle());
    Hand(spiegeln).Zeigen();
    for (const QString &ziel : {u"neu.pzb"_s, w.Pfad("neu.pzb"), w.Dort("fehlt/neu.pzb"), QString()}) {
        Hand(spiegeln).Ersetze("lblDateiname", ziel);
        QCOMPARE(Angebot(spiegeln), "");
    }
    Hand(spiegeln).Ersetze("lblDateiname", w.Dort("neu.pzb"));
    QCOMPARE(Angebot(spiegeln), "Bilder und Töne mitkopieren (1 Datei, 4 Bytes)");
}

void MedienTest::MirroredBoxHasItsFilesBesideIt()
{
    ZweiOrdner w;
    w.Schreiben("hund.jpg", "Hund");
    w.Schreiben("wuff.wav", "Klang");
    w.Schreiben("unbenannt.jpg", "niemandes");
    WriteFileSynced(w.Dort("HUND.jpg"), "ein anderer");
    w.Oeffnen({Karte(1, "hund.jpg", "wuff.wav")});
    Karteispiegeln dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Ersetze("lblDateiname", w.Dort("neu.pzb"));
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(w.meldungen.Texte(), QStringList{w.Dort("neu.pzb") + " erfolgreich geschrieben"});
    QCOMPARE(w.DateienDort(), (QStringList{"HUND.jpg", "hund-2.jpg", "neu.pzb", "wuff.wav"}));
    QCOMPARE(w.BytesDort("hund-2.jpg"), "Hund");
    const CardRecord karte = w.Karten()[0];
    QCOMPARE(karte.Picture_1_Name, "hund-2.jpg");
    QCOMPARE(karte.Picture_8_Name, "wuff.wav");
    QCOMPARE(karte.Frage_Klartext, "Antwort 1");
    QCOMPARE(ReadCards(w.Pfad("offen.pzb"))[0].Picture_1_Name, "hund.jpg");
}

void MedienTest::FilteredBoxHasOnlyTheFilesOfItsTopics()
{
    ZweiOrdner w;
    w.Schreiben("hund.jpg", "Hund");
    w.Schreiben("rose.jpg", "Rose");
    w.Oeffnen({Karte(1, "hund.jpg", {}, "Tiere"), Karte(2, "rose.jpg", {}, "Pflanzen")});
    Themaausfiltern dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    auto *liste = Hand(dialog).Finde<QListWidget>("lstÜbernehmen");
    liste->setCurrentItem(liste->findItems("Pflanzen", Qt::MatchExactly).value(0));
    QTest::keyClick(liste, Qt::Key_Space);
    Hand(dialog).Ersetze("lblDateiname", w.Dort("neu.pzb"));
    QCOMPARE(Angebot(dialog), "Bilder und Töne mitkopieren");
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(w.DateienDort(), (QStringList{"hund.jpg", "neu.pzb"}));
}

void MedienTest::WhatIsMissingIsReported()
{
    ZweiOrdner w;
    w.Oeffnen({Karte(1, "fehlt.jpg"), Karte(2, "fehlt.jpg", "../../etc/passwd")});
    Karteispiegeln dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Ersetze("lblDateiname", w.Dort("neu.pzb"));
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(w.meldungen.berichte,
             QStringList{"Bilder und Töne\n"
                         "Nicht mitgekommen sind diese Bilder und Töne; die Karten nennen sie weiter:\n\n"
                         "„fehlt.jpg“ fehlt. (2 Karten)\n"
                         "„../../etc/passwd“ ist kein Name eines Bildes oder Klangs. (1 Karte)"});
    QCOMPARE(w.DateienDort(), QStringList{"neu.pzb"});
}

void MedienTest::CancellingLeavesBoxesAndDirectories()
{
    ZweiOrdner w;
    for (int i = 0; i < 5; ++i) {
        w.Schreiben(u"%1.jpg"_s.arg(i), QByteArray::number(i));
        WriteFileSynced(w.Dort(u"%1.jpg"_s.arg(i)), "x" + QByteArray::number(i));
    }
    const QList<CardRecord> karten{Karte(1, "0.jpg", "1.jpg"), Karte(2, "2.jpg", "3.jpg"), Karte(3, "4.jpg")};
    MakeCardFile(w.Dort("quelle.pzb"), karten);
    w.Oeffnen(karten);
    const QByteArray vorher = w.Bytes("offen.pzb");
    const QStringList hier = w.Dateien();
    const QStringList dort = w.DateienDort();
    int runden = 0;
    for (int abbruch = 0; abbruch < 1000; ++abbruch, ++runden) {
        int gezaehlt = 0;
        bool abgebrochen = false;
        w.oeffner.WartenZeigen = [&](const QString &was, const QString &text) -> Progress {
            if (was != "Bilder und Töne werden kopiert.")
                return {};
            return [&, text](int, int) {
                if (gezaehlt++ != abbruch)
                    return;
                abgebrochen = true;
                throw StoreError(Fehler::Abgebrochen, text);
            };
        };
        w.meldungen.gezeigt.clear();
        Karteianhängen anhaengen(w.oeffner, w.Alle());
        Hand(anhaengen).Zeigen();
        Hand(anhaengen).Ersetze("lblDateiname", w.Dort("quelle.pzb"));
        Hand(anhaengen).Klick("cmdOK");
        if (!abgebrochen)
            break;
        QCOMPARE(w.meldungen.Texte(),
                 QStringList{"Das Kopieren wurde abgebrochen. Es bleibt alles, wie es war."});
        anhaengen.close();
        QCOMPARE(w.Bytes("offen.pzb"), vorher);
        QCOMPARE(w.Dateien(), hier);

        gezaehlt = 0;
        abgebrochen = false;
        w.meldungen.gezeigt.clear();
        Karteispiegeln spiegeln(w.oeffner, w.Alle());
        Hand(spiegeln).Zeigen();
        Hand(spiegeln).Ersetze("lblDateiname", w.Dort("neu.pzb"));
        Hand(spiegeln).Klick("cmdOK");
        QVERIFY(abgebrochen);
        QCOMPARE(w.meldungen.Texte(),
                 QStringList{"Das Kopieren wurde abgebrochen. Es bleibt alles, wie es war."});
        QCOMPARE(w.store.CurrentFileName, "offen.pzb");
        QVERIFY(w.store.IsOpen());
        QCOMPARE(w.DateienDort(), dort);
    }
    QVERIFY(runden >= 5);
}

void MedienTest::AFullDiskLeavesBoxesAndDirectories()
{
    ZweiOrdner w;
    const QByteArray gross(1 << 20, 'x');
    w.Schreiben("gross.jpg", gross);
    WriteFileSynced(w.Dort("gross.jpg"), gross + 'y');
    MakeCardFile(w.Dort("quelle.pzb"), {Karte(1, "gross.jpg")});
    w.Oeffnen({Karte(1, "gross.jpg")});
    const QByteArray vorher = w.Bytes("offen.pzb");
    const QStringList hier = w.Dateien();
    const QStringList dort = w.DateienDort();
    {
        Karteianhängen dialog(w.oeffner, w.Alle());
        Hand(dialog).Zeigen();
        Hand(dialog).Ersetze("lblDateiname", w.Dort("quelle.pzb"));
        const FullDisk voll(600'000);
        Hand(dialog).Klick("cmdOK");
    }
    QCOMPARE(w.meldungen.Texte(),
             QStringList{"Leider ist folgender Fehler Aufgetreten: Der Datenträger ist voll: " +
                         w.Pfad("gross-2.jpg") + ". Es wurde nichts übernommen."});
    QCOMPARE(w.Bytes("offen.pzb"), vorher);
    QCOMPARE(w.Dateien(), hier);
    w.meldungen.gezeigt.clear();
    {
        Karteispiegeln dialog(w.oeffner, w.Alle());
        Hand(dialog).Zeigen();
        Hand(dialog).Ersetze("lblDateiname", w.Dort("neu.pzb"));
        const FullDisk voll(600'000);
        Hand(dialog).Klick("cmdOK");
    }
    QCOMPARE(w.meldungen.Texte(),
             QStringList{"Leider ist folgender Fehler Aufgetreten: Der Datenträger ist voll: " +
                         w.Dort("gross-2.jpg")});
    QCOMPARE(w.DateienDort(), dort);
    QCOMPARE(w.store.KarteiPfad, w.verzeichnis.path());
    QVERIFY(w.store.IsOpen());
}

PAUKFIX_TEST(MedienTest)
#include "MedienTest.moc"
