// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardEditorWerk.h"
#include "TestProgram.h"

#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

// What the editor stores and deletes is taken back as it was.
class EditorSchritteTest : public QObject
{
    Q_OBJECT

private slots:

    void AChangeOfACardIsTakenBack()
    {
        Werk w(Drei());
        w.editor.CVor();
        w.Aendern(u"neu"_s);
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.store.schritte.Zurueckzunehmen(), u"Änderung an Karte 2"_s);
        w.store.schritte.Zuruecknehmen();
        QCOMPARE(w.kartei.Stored(), Drei());
    }

    void ACardThatIsStoredAsItIsIsNoStep()
    {
        Werk w(Drei());
        for (int i = 0; i < 3; ++i) { // the first time its empty fields get their values
            w.editor.cardDirty = true;
            QVERIFY(w.editor.StoreCard());
        }
        w.store.schritte.Zuruecknehmen();
        QCOMPARE(w.store.schritte.Zurueckzunehmen(), QString());
        QCOMPARE(w.kartei.Stored(), Drei());
    }

    void ANewCardIsTakenBackWithItsNumber()
    {
        Werk w(Drei());
        const qint16 lfdMax = w.store.FachInfo[0].LfdMax;
        w.editor.CEOF();
        w.form.Tippen(u"f"_s, u"a"_s);
        w.editor.cardDirty = true;
        QVERIFY(w.editor.StoreCard());
        const QString neu = u"Neue Karte %1"_s.arg(w.store.HighestCardNumber);
        QCOMPARE(w.store.schritte.Zurueckzunehmen(), neu);
        w.store.schritte.Zuruecknehmen();
        QCOMPARE(w.store.HighestCardNumber, qint16(3));
        QCOMPARE(w.store.FachInfo[0].LfdMax, lfdMax);
        w.store.schritte.Wiederholen();
        QCOMPARE(w.store.HighestCardNumber, qint16(4));
        w.store.schritte.Zuruecknehmen();
        QCOMPARE(w.kartei.Stored(), Drei());
    }

    void ADeletedCardComesBack()
    {
        Werk w(Drei());
        w.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        w.editor.Loeschen();
        QCOMPARE(w.store.Karten().RecordCount(), 2);
        QCOMPARE(w.store.schritte.Zurueckzunehmen(), u"Löschen der Karte 1"_s);
        w.store.schritte.Zuruecknehmen();
        QCOMPARE(w.kartei.Stored(), Drei());
    }
};

PAUKFIX_CORE_TEST(EditorSchritteTest)
#include "EditorSchritteTest.moc"
