// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Handbuchinhalt.h"
#include "Handbuchseiten.h"
#include "Handbuchtexte.h"
#include "ProgrammBuehne.h"
#include "Tastenliste.h"
#include "TestProgram.h"

#include <QMenu>
#include <QMenuBar>

#include <algorithm>

using namespace paukfix;

// What the handbook says is there: menu entries, keys, captions, messages, pages and pictures.
class HandbuchTest : public ProgrammBuehne
{
    Q_OBJECT

private:
    static QString OhneMarke(QString text) { return text.remove('&').simplified(); }

    static void Sammeln(const QMenu &menue, const QString &weg, QSet<QString> &eintraege)
    {
        for (const QAction *eintrag : menue.actions()) {
            const QString name = weg + " › " + OhneMarke(eintrag->text());
            eintraege << name;
            if (eintrag->menu())
                Sammeln(*eintrag->menu(), name, eintraege);
        }
    }

    static QSet<QString> Menueeintraege(const QString &fenster)
    {
        QSet<QString> eintraege;
        for (const QMenuBar *leiste : Hand::Offen(fenster)->findChildren<QMenuBar *>())
            for (const QAction *menue : leiste->actions())
                Sammeln(*menue->menu(), OhneMarke(menue->text()), eintraege);
        return eintraege;
    }

    // "[Strg]+[1] bis [Strg]+[3]" are three keys.
    static QSet<QString> AlleTastennamen()
    {
        QSet<QString> namen;
        const QRegularExpression kombination(R"(\[[^\]]+\](?:\+\[[^\]]+\])*)");
        for (const Tastengruppe &gruppe : AlleTasten())
            for (const auto &[tasten, was] : gruppe.zeilen) {
                auto treffer = kombination.globalMatch(tasten);
                qsizetype ende = 0;
                QString davor;
                while (treffer.hasNext()) {
                    const auto eine = treffer.next();
                    const QString name = eine.captured().replace("]+[", "+").mid(1).chopped(1);
                    if (tasten.mid(ende, eine.capturedStart() - ende) == " bis ")
                        for (QString i = davor; i.back() < name.back();
                             i.back() = QChar(i.back().unicode() + 1))
                            namen << i;
                    namen << name;
                    davor = name;
                    ende = eine.capturedEnd();
                }
            }
        return namen;
    }

    static QString Seite(const QString &datei)
    {
        const QString pfad = QDir(ProgramDir()).filePath("handbuch/" + datei);
        return QFile::exists(pfad) ? Gelesen(pfad) : QString();
    }

    // Is there a page, and the place on it that the link names?
    static bool Da(const QString &verweis)
    {
        const QString seite = Seite(verweis.section('#', 0, 0));
        const QString stelle = verweis.section('#', 1);
        return !seite.isEmpty() && (stelle.isEmpty() || seite.contains("<a name=\"" + stelle + "\">"));
    }

    // The handbook's pictures that the script takes.
    static QStringList Aufnahmen()
    {
        const QString skript = Gelesen(SourceFile("scripts/pictures"));
        const QString teil =
            skript.section("\nif [ \"$setting\" = handbuch ]; then\n", 1).section("\nfi\n", 0, 0);
        QStringList namen;
        auto treffer = QRegularExpression("^ +(?:shot|window) ([a-z-]+)", QRegularExpression::MultilineOption)
                           .globalMatch(teil);
        while (treffer.hasNext())
            namen << treffer.next().captured(1) + ".png";
        return namen;
    }

private slots:

    void init() { Aufstellen(); }

    void cleanup() { Abraeumen(); }

    void EveryMenuEntryThatItNamesIsThere()
    {
        OeffnenMitZweiDateien();
        QSet<QString> eintraege = Menueeintraege("LBOX");
        Waehlen("MKarten");
        QTRY_VERIFY(Hand::Bereit("PFÄndern"));
        eintraege += Menueeintraege("PFÄndern");
        eintraege << "Automatik › ausschalten"; // while it is on
        QStringList fehlen;
        int genannt = 0;
        for (const QString &datei : Handbuchtext::Dateien())
            for (const QString &fett : Handbuchtext(datei).Fett())
                if (fett.contains("›") && ++genannt && !eintraege.contains(fett))
                    fehlen << datei + ": " + fett;
        QCOMPARE(fehlen.join('\n'), QString());
        QVERIFY(genannt > 25);
    }

    void EveryKeyThatItNamesIsInTheTable()
    {
        const QSet<QString> tasten = AlleTastennamen();
        QStringList fehlen;
        for (const QString &datei : Handbuchtext::Dateien())
            for (const QString &taste : Handbuchtext(datei).Tasten())
                if (!tasten.contains(taste))
                    fehlen << datei + ": " + taste;
        QCOMPARE(fehlen.join('\n'), QString());
    }

    void EveryCaptionAndMessageThatItQuotesIsInTheProgram()
    {
        const QSet<QString> quelltexte = Quelltexte();
        const auto beschriftet = [&](const QString &text) {
            return quelltexte.contains(text) || quelltexte.contains(text + ':');
        };
        const auto gesagt = [&](const QString &text) {
            return std::ranges::any_of(quelltexte,
                                       [&](const QString &quelle) { return quelle.contains(text); });
        };
        QStringList fehlen;
        for (const QString &datei : Handbuchtext::Dateien()) {
            const Handbuchtext text(datei);
            for (const QString &fett : text.Fett())
                if (!fett.contains("›") && !beschriftet(fett))
                    fehlen << datei + ": " + fett;
            for (const QString &meldung : text.Texte())
                if (!gesagt(meldung))
                    fehlen << datei + ": " + meldung;
        }
        QCOMPARE(fehlen.join('\n'), QString());
    }

    void EveryLinkLeadsSomewhere()
    {
        QStringList fehlen;
        for (const QString &datei : Handbuchtext::Dateien())
            for (const QString &verweis : Handbuchtext(datei).Verweise())
                if (!Da(verweis))
                    fehlen << datei + ": " + verweis;
        QCOMPARE(fehlen.join('\n'), QString());
        // The contents call each page as it calls itself.
        const QList<Handbuchkapitel> inhalt = HandbuchinhaltLesen(QDir(ProgramDir()).filePath("handbuch"));
        QCOMPARE(inhalt.size(), Handbuchtext::Dateien().size() + 1); // and the page of all keys
        for (const Handbuchkapitel &kapitel : inhalt)
            QVERIFY2(Seite(kapitel.datei).contains("<title>" + kapitel.titel + "</title>"),
                     qPrintable(kapitel.titel));
    }

    void EveryPictureIsTakenByTheScript()
    {
        QStringList gezeigt;
        for (const QString &datei : Handbuchtext::Dateien())
            gezeigt << Handbuchtext(datei).Bilder();
        QStringList aufgenommen = Aufnahmen();
        gezeigt.sort();
        aufgenommen.sort();
        QCOMPARE(gezeigt, aufgenommen);
        QVERIFY(gezeigt.size() >= 8);
    }

    void EveryWindowsPageIsThere()
    {
        for (auto seite = Handbuchseiten().cbegin(); seite != Handbuchseiten().cend(); ++seite)
            QVERIFY2(Da(seite.value()), qPrintable(seite.key() + ": " + seite.value()));
    }

    // Generated from the table, and complete.
    void ThePageOfAllKeysListsTheWholeTable()
    {
        const QString seite =
            Seite("tasten.html").replace("&lt;", "<").replace("&gt;", ">").remove("<code>").remove("</code>");
        for (const Tastengruppe &gruppe : AlleTasten()) {
            QVERIFY2(seite.contains("</a>" + gruppe.titel + "</h2>"), qPrintable(gruppe.titel));
            for (const auto &[tasten, was] : gruppe.zeilen) {
                QString zeile = "<td>" + tasten + "</td>\n<td>" + was + "</td>";
                zeile.remove('[').remove(']');
                QVERIFY2(seite.contains(zeile), qPrintable(zeile));
            }
        }
    }
};

PAUKFIX_TEST(HandbuchTest)
#include "HandbuchTest.moc"
