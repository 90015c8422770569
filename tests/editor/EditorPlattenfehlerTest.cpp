// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardEditorWerk.h"
#include "TestProgram.h"
#include "VollePlatte.h"

#include <QDir>
#include <QTest>

#include <algorithm>
#include <functional>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

using VollePlatte::Art;

// Texts that need overflow pages, so that storing touches many pages.
const QString lang(6000, u'l');

QList<CardRecord> Karten()
{
    QList<CardRecord> karten;
    for (int i = 1; i <= 20; ++i)
        karten << MakeCard(i, i % 4, i);
    karten[2].Antwort_2 = lang;
    return karten;
}

bool Stimmt(const FachTabelle &gezaehlt, int fach, const QList<CardRecord> &karten)
{
    return gezaehlt[static_cast<std::size_t>(fach)].Anzahl ==
           std::count_if(karten.begin(), karten.end(),
                         [&](const CardRecord &karte) { return karte.FachNr == fach; });
}

// What a learner does in the editor. `Beginnen` brings the card into the form, `Fertig` makes it last.
struct Handlung
{
    std::function<void(Werk &)> beginnen;
    std::function<bool(Werk &)> fertig;
};

} // namespace

Q_DECLARE_METATYPE(Handlung)

class EditorPlattenfehlerTest : public QObject
{
    Q_OBJECT

private:
    static void NeueTippen(Werk &w)
    {
        w.editor.CEOF();
        w.form.Tippen(lang, u"neue Antwort"_s);
        w.editor.cardDirty = true;
    }

    static void Aendern(Werk &w)
    {
        w.editor.Springen(u"3"_s);
        w.form.Tippen(lang, u"andere Antwort"_s);
        w.editor.cardDirty = true;
    }

private slots:

    void initTestCase() { VollePlatte::Einbauen(); }

    void AnyCallToTheDiskMayFailOnce_data()
    {
        QTest::addColumn<Handlung>("handlung");
        QTest::addColumn<Art>("art");
        const auto speichern = [](Werk &w) { return w.editor.StoreIfDirty(); };
        const std::pair<const char *, Handlung> handlungen[]{
            {"new card", {NeueTippen, speichern}},
            {"changed card", {Aendern, speichern}},
        };
        for (const auto &[name, handlung] : handlungen) {
            QTest::addRow("%s, nothing has happened", name) << handlung << Art::Fehler;
            QTest::addRow("%s, half of it has happened", name) << handlung << Art::Halb;
            QTest::addRow("%s, the disk is full", name) << handlung << Art::Voll;
        }
    }

    void AnyCallToTheDiskMayFailOnce()
    {
        QFETCH(Handlung, handlung);
        QFETCH(Art, art);
        QList<CardRecord> before, after;
        {
            Werk w(Karten());
            handlung.beginnen(w);
            QVERIFY(handlung.fertig(w));
            before = Karten();
            after = w.kartei.Stored();
            std::sort(before.begin(), before.end(), [](const CardRecord &a, const CardRecord &b) {
                return std::pair(a.FachNr, a.FachLfdNr) < std::pair(b.FachNr, b.FachLfdNr);
            });
            QVERIFY(before != after);
        }
        int run = 1, reports = 0;
        for (bool failed = true; failed; ++run) {
            // Once the file is looked at as the failure left it, once the card is stored again.
            for (const bool again : {false, true}) {
                Werk w(Karten());
                handlung.beginnen(w);
                VollePlatte::Scheitern(run, art);
                const bool stored = handlung.fertig(w);
                failed = VollePlatte::Gescheitert().has_value();
                VollePlatte::Scheitern(0);
                const QStringList texts = w.kartei.messages.Texte();
                const QString what = u"call %1: "_s.arg(run) + texts.join(u'|');
                for (const QString &text : texts)
                    QVERIFY2(IsGermanMessage(text), qPrintable(what));
                QVERIFY2(stored || !texts.isEmpty(), qPrintable(what));
                reports += texts.isEmpty() ? 0 : 1;
                // The card is still in the form where it is not stored.
                if (!stored)
                    QVERIFY2(w.editor.cardDirty && w.form.blatt.Frage == lang, qPrintable(what));
                if (again && !stored) {
                    QVERIFY2(handlung.fertig(w), qPrintable(what + w.kartei.messages.Texte().join(u'|')));
                    QVERIFY(!w.editor.cardDirty);
                }
                const FachTabelle gezaehlt = w.store.FachInfo; // closing empties it
                const QList<CardRecord> found = w.kartei.Stored();
                QCOMPARE(FaultIn(w.kartei.Path()), QString());
                QCOMPARE(QDir(w.kartei.directory.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
                const QString all = what + u" %1 cards"_s.arg(found.size());
                if (!again && !stored) {
                    QVERIFY2(found == before || found == after, qPrintable(all));
                } else {
                    // A number that was handed out is not given again.
                    QCOMPARE(found.size(), after.size());
                    for (const CardRecord &card : after)
                        QVERIFY2(std::any_of(found.begin(), found.end(),
                                             [&](CardRecord other) {
                                                 if (card.Frage == lang && card.FachNr == FachNeu) {
                                                     other.FrageNr = card.FrageNr;
                                                     other.FachLfdNr = card.FachLfdNr;
                                                 }
                                                 return other == card;
                                             }),
                                 qPrintable(all));
                }
                for (int fach = 0; fach < FachAnzahl; ++fach)
                    QVERIFY2(Stimmt(gezaehlt, fach, found), qPrintable(all));
            }
        }
        qInfo("%d calls, %d reported", run - 2, reports);
        QVERIFY(run > 10);
        QVERIFY(reports > 10);
    }

    void ADeletedCardIsCountedAsTheFileHasIt()
    {
        for (int run = 1;; ++run) {
            Werk w(Karten());
            w.editor.Springen(u"3"_s);
            w.kartei.messages.antworten.push_back(Meldungen::Antwort::Ja);
            VollePlatte::Scheitern(run, Art::Halb);
            w.editor.Loeschen();
            const bool failed = VollePlatte::Gescheitert().has_value();
            VollePlatte::Scheitern(0);
            for (const QString &text : w.kartei.messages.Texte())
                QVERIFY2(IsGermanMessage(text), qPrintable(text));
            const FachTabelle gezaehlt = w.store.FachInfo;
            const QList<CardRecord> found = w.kartei.Stored();
            QCOMPARE(FaultIn(w.kartei.Path()), QString());
            QVERIFY2(Stimmt(gezaehlt, 3, found), qPrintable(QString::number(run)));
            if (!failed)
                break;
        }
    }

    void AFileThatWasTakenAwayKeepsTheCardInTheForm_data()
    {
        QTest::addColumn<Handlung>("handlung");
        QTest::addColumn<bool>("ersetzt");
        const auto speichern = [](Werk &w) { return w.editor.StoreIfDirty(); };
        QTest::newRow("new card, renamed") << Handlung{NeueTippen, speichern} << false;
        QTest::newRow("new card, replaced") << Handlung{NeueTippen, speichern} << true;
        QTest::newRow("changed card, renamed") << Handlung{Aendern, speichern} << false;
        QTest::newRow("changed card, replaced") << Handlung{Aendern, speichern} << true;
    }

    void AFileThatWasTakenAwayKeepsTheCardInTheForm()
    {
        QFETCH(Handlung, handlung);
        QFETCH(bool, ersetzt);
        Werk w(Karten());
        handlung.beginnen(w);
        const QString moved = w.kartei.directory.filePath(u"weg.pzb"_s);
        QVERIFY(QFile::rename(w.kartei.Path(), moved));
        const QList<CardRecord> other{MakeCard(1, 5, 1)};
        if (ersetzt)
            MakeCardFile(w.kartei.Path(), other);
        QVERIFY(!handlung.fertig(w));
        QCOMPARE(w.kartei.messages.Texte(),
                 QStringList{u"Fehler beim Speichern der Karte: Die Datei „%1“ wurde gelöscht, "
                             u"umbenannt oder ersetzt, während sie offen war.\n\nDie Karte steht noch im "
                             u"Formular. Was soll geschehen?"_s.arg(w.kartei.Path())});
        QVERIFY(w.editor.cardDirty);
        QCOMPARE(w.form.blatt.Frage, lang);
        // What stands in its place is not touched, and nothing lies beside it.
        if (ersetzt) {
            QVERIFY(!QFile::exists(w.kartei.Path() + u"-journal"_s));
            QCOMPARE(ReadCards(w.kartei.Path()), other);
            QVERIFY(QFile::remove(w.kartei.Path()));
        }
        // As soon as the file is back the card is stored.
        QVERIFY(QFile::rename(moved, w.kartei.Path()));
        QVERIFY(handlung.fertig(w));
        const QList<CardRecord> found = w.kartei.Stored();
        QVERIFY(std::any_of(found.begin(), found.end(),
                            [](const CardRecord &card) { return card.Frage == lang; }));
        QCOMPARE(FaultIn(w.kartei.Path()), QString());
    }
};

PAUKFIX_CORE_TEST(EditorPlattenfehlerTest)
#include "EditorPlattenfehlerTest.moc"
