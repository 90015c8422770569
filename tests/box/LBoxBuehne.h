// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Drehbuch.h"
#include "FachBild.h"
#include "Fensterwechsel.h"
#include "KarteiOeffner.h"
#include "LBOX.h"
#include "PFUse.h"
#include "Statuszeile.h"
#include "StoreTestSupport.h"
#include "TestDienste.h"
#include "WuerfelBild.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QTest>

#include <functional>
#include <memory>

namespace paukfix {

// The real main window on real files, driven by key and mouse.
class LBoxBuehne : public TestDienste, public Hand
{
public:
    LBoxBuehne()
    {
        kartei.KarteiPfad = ordner.path();
        clock.perSecond = 2;
        KonfigSchreiben({}, "False");
    }

    QString Pfad(const QString &name) const { return ordner.filePath(name); }

    void KonfigSchreiben(const QStringList &dateien, const QString &animation)
    {
        QFile datei(programm.filePath("konfig.dat"));
        QVERIFY(datei.open(QIODevice::WriteOnly));
        QString text = "[recentfiles]\r\n";
        for (const QString &name : dateien)
            text += name + "\r\n";
        text += "[Font]\r\nFontName=Arial\r\nFontSize=12\r\n[Animation]\r\nAnimation=" + animation + "\r\n";
        datei.write(text.toLatin1());
    }

    QString KonfigText() const
    {
        QFile datei(programm.filePath("konfig.dat"));
        return datei.open(QIODevice::ReadOnly) ? QString::fromLatin1(datei.readAll()) : QString();
    }

    // Shows the window and waits until it has loaded.
    void Zeigen(const QString &befehlszeile = {}, LBoxFenster offen = {})
    {
        fenster = std::make_unique<LBOX>(
            kartei, oeffner, Alle(), Programmstart{.befehlszeile = befehlszeile, .verzeichnis = verzeichnis});
        wechsel = std::make_unique<Fensterwechsel>(fenster->Eingabe(), *fenster);
        pfuse = std::make_unique<PFUse>(kartei, Alle(), *wechsel, fenster.get());
        fenster->SetAbfrage(*pfuse);
        fenster->SetFenster(std::move(offen));
        Nimm(*fenster);
        Hand::Zeigen();
        // It reads the configuration after its first painting, and opens what there is to open.
        QTRY_VERIFY(!konfig.schrift.FontName.isEmpty());
        QCoreApplication::processEvents();
    }

    // The window on a card file that holds `karten`.
    void Oeffnen(const QList<CardRecord> &karten)
    {
        MakeCardFile(Pfad("a.pzb"), karten);
        Zeigen(Pfad("a.pzb"));
        QCOMPARE(meldungen.Texte(), QStringList());
        QVERIFY(kartei.IsOpen());
    }

    // The window on a box with these numbers of cards in compartments 0, 1, 2, ...
    void OeffnenMit(const QList<int> &anzahl)
    {
        QList<CardRecord> karten;
        int nummer = 1;
        for (int fach = 0; fach < anzahl.size(); ++fach)
            for (int i = 1; i <= anzahl[fach]; ++i)
                karten << MakeCard(nummer++, fach, i);
        Oeffnen(karten);
    }

    // Where names without directory lie.
    QString Arbeitsverzeichnis() const { return fenster->Aktionen().Arbeitsverzeichnis(); }

    QAction *Menue(const QString &name) const { return Finde<QAction>(name); }

    KaShape *Balken(int fach) const { return Finde<KaShape>(QString("KaShape(%1)").arg(fach)); }

    // What a person sees: a red line on all sides of the compartment.
    bool RotUmrandet(int fach) const
    {
        const QImage bild = fenster->grab().toImage();
        const double mass = bild.devicePixelRatio();
        const auto *image0 = Finde(QString("Image0(%1)").arg(fach));
        const QRect innen(image0->mapTo(fenster.get(), QPoint()), image0->size());
        const auto rotBei = [&](QPoint punkt, QPoint nachAussen) {
            for (int weit = -1; weit <= 8; ++weit) {
                const QColor farbe =
                    bild.pixelColor(((punkt + nachAussen * weit).toPointF() * mass).toPoint());
                if (farbe.red() > 220 && farbe.green() < 60 && farbe.blue() < 60)
                    return true;
            }
            return false;
        };
        const QPoint mitte = innen.center();
        return rotBei({innen.left(), mitte.y()}, {-1, 0}) && rotBei({innen.right(), mitte.y()}, {1, 0}) &&
               rotBei({mitte.x(), innen.bottom()}, {0, 1});
    }

    WuerfelBild *Wuerfel() const { return Finde<WuerfelBild>("PicWürfel"); }

    // What the learner does in the next query: `lernen` gets its window when it has become active.
    void NaechsteAbfrage(std::function<void(QWidget *)> lernen)
    {
        abfragen.Dazu(Drehbuch::In("PFUse", [this, lernen = std::move(lernen)](QWidget &abfrage) {
            gefragt << Hand(abfrage).Text("MaskFrageNr");
            lernen(&abfrage);
            if (abfrage.isVisible())
                abfrage.close();
        }));
    }

    // The next query is answered by keyboard: right or wrong, Enter, Enter.
    void NaechsteAntwort(bool richtig)
    {
        NaechsteAbfrage([this, richtig](QWidget *) {
            Tippe(richtig ? "Antwort " + gefragt.last() : QString("weiss nicht"));
            Taste(Qt::Key_Return);
            Taste(Qt::Key_Return);
        });
    }

    // Presses a key on the main window and answers the query that it opens.
    void Lernen(Qt::Key taste, bool richtig)
    {
        NaechsteAntwort(richtig);
        Taste(taste);
    }

    // More cards for a compartment than its file has.
    void Fuellen(int fach, int karten)
    {
        for (int i = 0; i < karten; ++i)
            kartei.FachInfo.Anhaengen(fach);
    }

    qint16 Anzahl(std::size_t fach) const { return kartei.FachInfo[fach].Anzahl; }

    // What lies on disk: FrageNr by compartment, in box order. Closes the file.
    QList<QList<int>> Gespeichert()
    {
        kartei.CloseCardFile();
        QList<QList<int>> faecher(7);
        for (const CardRecord &karte : ReadCards(Pfad("a.pzb")))
            faecher[int(karte.FachNr)] << int(karte.FrageNr);
        return faecher;
    }

    QTemporaryDir ordner;
    QString verzeichnis = "/"; // where the program was started
    CardStore kartei;
    KarteiOeffner oeffner{kartei, meldungen, clock};
    std::unique_ptr<LBOX> fenster;
    std::unique_ptr<Fensterwechsel> wechsel;
    std::unique_ptr<PFUse> pfuse;
    Drehbuch abfragen;   // what is done in those to come
    QStringList gefragt; // the FrageNr of every query so far
};

} // namespace paukfix
