// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Wiederholungswache.h"

#include "TestProgram.h"

#include <QKeyEvent>
#include <QTest>
#include <QWidget>
#include <QWindow>

using namespace paukfix;

// Counts what comes to it.
class Taster final : public QWidget
{
public:
    int einmal = 0, wiederholt = 0;

protected:
    void keyPressEvent(QKeyEvent *event) override { ++(event->isAutoRepeat() ? wiederholt : einmal); }
};

class WiederholungswacheTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Taster> fenster_;

    void Taste(QEvent::Type art, quint32 tastencode, quint64 zeit) const
    {
        QKeyEvent event(art, Qt::Key_Return, Qt::NoModifier, tastencode, 0, 0, "\r");
        event.setTimestamp(zeit);
        QCoreApplication::sendEvent(fenster_->windowHandle(), &event);
    }

private slots:

    void init()
    {
        fenster_ = std::make_unique<Taster>();
        fenster_->show();
        QVERIFY(QTest::qWaitForWindowActive(fenster_.get()));
    }

    void APressAtTheTimeOfTheReleaseIsARepeat()
    {
        const Wiederholungswache wache;
        Taste(QEvent::KeyPress, 36, 1000);
        Taste(QEvent::KeyRelease, 36, 1660);
        Taste(QEvent::KeyPress, 36, 1660);
        Taste(QEvent::KeyRelease, 36, 1700);
        Taste(QEvent::KeyPress, 36, 1700);
        QCOMPARE(fenster_->einmal, 1);
        QCOMPARE(fenster_->wiederholt, 2);
    }

    void PressesOneAfterTheOtherAreNone()
    {
        const Wiederholungswache wache;
        Taste(QEvent::KeyPress, 36, 1000);
        Taste(QEvent::KeyRelease, 36, 1080);
        Taste(QEvent::KeyPress, 36, 1081);
        Taste(QEvent::KeyRelease, 36, 1100);
        Taste(QEvent::KeyPress, 104, 1100); // another key
        QCOMPARE(fenster_->einmal, 3);
        QCOMPARE(fenster_->wiederholt, 0);
    }

    void KeysWithoutATimeAreTakenAsTheyCome()
    {
        const Wiederholungswache wache;
        Taste(QEvent::KeyPress, 0, 0);
        Taste(QEvent::KeyRelease, 0, 0);
        Taste(QEvent::KeyPress, 0, 0);
        QCOMPARE(fenster_->einmal, 2);
    }
};

PAUKFIX_TEST(WiederholungswacheTest)
#include "WiederholungswacheTest.moc"
