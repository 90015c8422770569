// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// What a learner waits for, in the real program on an X server with a window manager: from the key to the
// question, from Enter to the verdict, and from "Weiter" to the box at rest, its card stored. Beside it, in
// the same run, an empty dialog that a key shows and a key hides. Keys come from the server; a time ends when
// what was painted has reached it. "query_bench typed|ticked|picture" (bench/query starts it).
#include "Programm.h"
#include "StoreTestSupport.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QImage>
#include <QKeyEvent>
#include <QMainWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <utility>
#include <vector>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int Rounds = 21;
constexpr milliseconds Rest{300}; // after which nothing more is painted
constexpr int KeysymReturn = 0xff0d;

// Presses keys as a person at this display does.
class Hands
{
public:
    Hands() : server_(xcb_connect(nullptr, nullptr))
    {
        const xcb_setup_t *setup = xcb_get_setup(server_);
        first_ = setup->min_keycode;
        const auto asked = xcb_get_keyboard_mapping(
            server_, first_, static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1));
        map_ = xcb_get_keyboard_mapping_reply(server_, asked, nullptr);
    }

    Hands(const Hands &) = delete;
    Hands &operator=(const Hands &) = delete;

    ~Hands()
    {
        std::free(map_);
        xcb_disconnect(server_);
    }

    void Press(int keysym)
    {
        const xcb_keysym_t *symbols = xcb_get_keyboard_mapping_keysyms(map_);
        const int count = xcb_get_keyboard_mapping_keysyms_length(map_);
        for (int i = 0; i < count; i += map_->keysyms_per_keycode)
            if (symbols[i] == static_cast<xcb_keysym_t>(keysym)) {
                const auto code = static_cast<uint8_t>(first_ + i / map_->keysyms_per_keycode);
                Fake(XCB_KEY_PRESS, code);
                Fake(XCB_KEY_RELEASE, code);
                break;
            }
        xcb_flush(server_);
    }

private:
    // XTEST's FakeInput, for which no header need be there.
    void Fake(uint8_t type, uint8_t detail)
    {
        static xcb_extension_t xtest{"XTEST", 0};

        struct
        {
            uint8_t major = 0, minor = 0;
            uint16_t length = 0;
            uint8_t type = 0, detail = 0;
            uint16_t unused = 0;
            uint32_t time = 0, root = 0, unused2[2] = {};
            uint16_t x = 0, y = 0;
            uint8_t unused3[7] = {}, device = 0;
        } request{.type = type, .detail = detail};

        static_assert(sizeof request == 36);
        const xcb_protocol_request_t protocol{1, &xtest, 2, 1};
        iovec parts[4] = {};
        parts[2] = {&request, sizeof request};
        xcb_send_request(server_, 0, parts + 2, &protocol);
    }

    xcb_connection_t *server_;
    xcb_get_keyboard_mapping_reply_t *map_ = nullptr;
    uint8_t first_ = 0;
};

// Notes when what is looked for was painted, and when the last thing happened that a person sees or waits
// for.
class Observer final : public QApplication
{
public:
    using QApplication::QApplication;

    QString awaited; // object name
    std::atomic<Clock::rep> first{0}, last{0};

    bool notify(QObject *object, QEvent *event) override
    {
        const bool key = event->type() == QEvent::KeyPress && event->spontaneous() && object->isWindowType();
        const bool result = QApplication::notify(object, event);
        const auto *widget = event->type() == QEvent::Paint ? qobject_cast<const QWidget *>(object) : nullptr;
        if (widget && IsSeen(widget->window())) {
            const bool is = object->objectName() == awaited ||
                            (widget->parentWidget() && widget->parentWidget()->objectName() == awaited);
            // What is painted goes to the server when the event that had it painted is over.
            seen_ = seen_ || is;
            if (!std::exchange(pending_, true))
                QMetaObject::invokeMethod(
                    this,
                    [this] {
                        pending_ = false;
                        Stamp(std::exchange(seen_, false));
                    },
                    Qt::QueuedConnection);
        } else if (event->type() == QEvent::Expose) {
            Stamp(Holds(object)); // painted before it could be seen, or shown again as it was painted
        } else if (key || event->type() == QEvent::FocusIn) {
            Stamp(false);
        }
        return result;
    }

private:
    static bool IsSeen(const QWidget *window)
    {
        return window->isVisible() && window->windowHandle() && window->windowHandle()->isExposed();
    }

    // Whether what is awaited can be seen in the window that was exposed.
    bool Holds(const QObject *exposed) const
    {
        return std::ranges::any_of(topLevelWidgets(), [&](const QWidget *window) {
            return window->windowHandle() == exposed && IsSeen(window) &&
                   (window->objectName() == awaited || window->findChild<const QWidget *>(awaited));
        });
    }

    void Stamp(bool is)
    {
        auto *server = nativeInterface<QNativeInterface::QX11Application>()->connection();
        std::free(xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr));
        const auto now = Clock::now().time_since_epoch().count();
        Clock::rep none = 0;
        if (is)
            first.compare_exchange_strong(none, now);
        last = now;
    }

    bool pending_ = false, seen_ = false;
};

struct Times
{
    std::vector<double> first, last;
};

// Called from the thread of the hands.
void Await(Observer &program, Hands &hands, int keysym, const char *awaited, Times &times)
{
    std::this_thread::sleep_for(Rest);
    QMetaObject::invokeMethod(
        &program, [&] { program.awaited = QString::fromUtf8(awaited); }, Qt::BlockingQueuedConnection);
    program.first = 0;
    program.last = 0;
    const auto begin = Clock::now();
    hands.Press(keysym);
    while (program.first == 0 || Clock::now() - Clock::time_point(Clock::duration(program.last)) < Rest) {
        if (Clock::now() - begin > std::chrono::seconds(20)) {
            std::fprintf(stderr, "%s was never painted\n", awaited);
            std::_Exit(1);
        }
        std::this_thread::sleep_for(milliseconds(1));
    }
    const auto since = [begin](Clock::rep end) {
        return std::chrono::duration<double, std::milli>(Clock::time_point(Clock::duration(end)) - begin)
            .count();
    };
    times.first.push_back(since(program.first));
    times.last.push_back(since(program.last));
}

void Print(const char *what, Times &times)
{
    const auto at = [](std::vector<double> &values, double share) {
        std::ranges::sort(values);
        return values[static_cast<std::size_t>(std::lround(share * static_cast<double>(values.size() - 1)))];
    };
    std::printf("%-34s %8.1f %8.1f %8.1f %8.1f\n", what, at(times.first, 0.5), at(times.first, 0.9),
                at(times.last, 0.5), at(times.last, 0.9));
}

// An empty dialog of the query's size: what the window system takes at least.
void MeasureFloor(Observer &program)
{
    class Floor final : public QMainWindow
    {
    public:
        QDialog dialog{this};

    protected:
        void keyPressEvent(QKeyEvent *) override { dialog.exec(); }
    } window;

    window.setObjectName(u"floor"_s);
    window.resize(980, 600);
    window.dialog.setObjectName(u"dialog"_s);
    window.dialog.setWindowModality(Qt::ApplicationModal);
    window.dialog.resize(900, 660);
    window.show();
    auto ok = std::make_unique<QAction>();
    ok->setShortcut(Qt::Key_Return);
    window.dialog.addAction(ok.get());
    QObject::connect(ok.get(), &QAction::triggered, &window.dialog, &QDialog::accept);
    Times shown, hidden;
    std::thread hands([&] {
        Hands both;
        for (int i = 0; i < Rounds; ++i) {
            Await(program, both, '3', "dialog", shown);
            Await(program, both, KeysymReturn, "floor", hidden);
        }
        QMetaObject::invokeMethod(&program, [] { QCoreApplication::exit(); });
    });
    program.exec();
    hands.join();
    Print("Floor/KeyToEmptyDialog", shown);
    Print("Floor/EnterToWindowBehind", hidden);
}

void WriteFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

void MakeBox(const QTemporaryDir &directory, const QString &kind)
{
    QList<CardRecord> cards;
    for (int i = 1; i <= 60; ++i) {
        // The fullest compartment is 1, and its first card what Enter asks.
        CardRecord card = MakeCard(i, i <= 40 ? 1 : 0, i);
        card.Frage = u"{\\rtf1 Wie hei\\'dft die Hauptstadt von \\b Land %1\\b0 ?\\par}"_s.arg(i);
        if (kind == "ticked"_L1) {
            card.Antworttyp = 2;
            card.Antwort_2 = u"eine andere Stadt"_s;
            card.Antwort_3 = u"eine dritte Stadt"_s;
            card.Antwort_ch_2 = true;
        }
        if (kind == "picture"_L1)
            card.Picture_1_Name = u"bild%1.jpg"_s.arg(i);
        cards << card;
    }
    MakeCardFile(directory.filePath(u"a.pzb"_s), cards);
    if (kind != "picture"_L1)
        return;
    QImage picture(1732, 1155, QImage::Format_RGB32); // two megapixels
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, qRgb((x * 7 + y) & 255, (x + y * 3 + (x * y >> 7)) & 255, (x ^ y) & 255));
    picture.save(directory.filePath(u"bild1.jpg"_s), nullptr, 85);
    for (int i = 2; i <= 60; ++i)
        QFile::copy(directory.filePath(u"bild1.jpg"_s), directory.filePath(u"bild%1.jpg"_s.arg(i)));
}

void MeasureQuery(Observer &program, const QString &kind)
{
    const QTemporaryDir directory;
    MakeBox(directory, kind);
    for (const char *name : {"face01.ico", "face03.ico", "paukfix.ico"})
        QFile::copy(u"" PROGRAM_DIR u"/"_s + QLatin1String(name), directory.filePath(QLatin1String(name)));
    WriteFile(directory.filePath(u"konfig.dat"_s),
              "[recentfiles]\r\n[Font]\r\nFontName=DejaVu "
              "Sans\r\nFontSize=10\r\n[Animation]\r\nAnimation=False\r\n");
    Programm paukfix(directory.path());
    if (!paukfix.Starten(BefehlszeileLesen({u"paukfix"_s, directory.filePath(u"a.pzb"_s)})))
        qFatal("the program does not start");
    Times guessed, other, verdict, box;
    std::thread hands([&] {
        Hands both;
        std::this_thread::sleep_for(std::chrono::seconds(4)); // the opening of the file waits for the clock
        for (int i = 0; i < Rounds; ++i) {
            Await(program, both, KeysymReturn, "MFrage", guessed);
            Await(program, both, KeysymReturn, "Urteil", verdict);
            Await(program, both, KeysymReturn, "LBOX", box);
        }
        Times unused;
        for (int i = 0; i < 9; ++i) {
            Await(program, both, 'n', "MFrage", other);
            Await(program, both, KeysymReturn, "Urteil", unused);
            Await(program, both, KeysymReturn, "LBOX", unused);
        }
        QMetaObject::invokeMethod(&program, [] { QCoreApplication::exit(); });
    });
    program.exec();
    hands.join();
    const QByteArray name = kind.toUtf8() + '/';
    Print((name + "EnterToQuestion").constData(), guessed);
    Print((name + "OtherKeyToQuestion").constData(), other);
    Print((name + "EnterToVerdict").constData(), verdict);
    Print((name + "WeiterToBoxAtRest").constData(), box);
}

} // namespace

int main(int argc, char *argv[])
{
    Observer program(argc, argv);
    QApplication::setCursorFlashTime(0);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    std::printf("%-34s %17s %17s\n", "ms, median and 9 of 10", "first painted", "at rest");
    MeasureFloor(program);
    MeasureQuery(program, argc > 1 ? QString::fromUtf8(argv[1]) : u"typed"_s);
    return 0;
}
