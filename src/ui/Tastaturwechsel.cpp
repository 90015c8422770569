// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Tastaturwechsel.h"

#include <QAbstractNativeEventFilter>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QWindow>

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <string_view>
#include <xcb/xcb.h>

namespace paukfix {

namespace {

// Long enough for a busy machine; what they wait for takes some ten milliseconds.
constexpr int FristMs = 2000;      // a window manager may refuse the keyboard to a new window
constexpr int AbholfristMs = 2000; // a server that answers later is not waited for
constexpr int TaktMs = 4;          // between two looks at who has the keyboard
constexpr xcb_atom_t Marke = XCB_ATOM_NOTICE;

// Null where the program does not talk to an X server.
xcb_connection_t *XServer()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_window_t Nummer(const QWindow *fenster)
{
    return static_cast<xcb_window_t>(fenster->winId());
}

struct Freigeber
{
    void operator()(void *antwort) const { free(antwort); }
};

template <typename Antwort>
using AntwortPtr = std::unique_ptr<Antwort, Freigeber>;

// A question is sent when it is made and answered by the server while others are made: several of them cost
// one way there and back. Each must be asked for its answer.

// Who has the keyboard, as the server says: the toolkit learns of it later.
class Tastaturfrage
{
public:
    explicit Tastaturfrage(xcb_connection_t *server) : server_(server), frage_(xcb_get_input_focus(server)) {}

    bool Hat(const QWindow *fenster) const
    {
        const AntwortPtr<xcb_get_input_focus_reply_t> antwort(
            xcb_get_input_focus_reply(server_, frage_, nullptr));
        return antwort && antwort->focus == Nummer(fenster);
    }

private:
    xcb_connection_t *server_;
    xcb_get_input_focus_cookie_t frage_;
};

// The first number in a property of a window.
class Eigenschaft
{
public:
    Eigenschaft(xcb_connection_t *server, xcb_window_t fenster, xcb_atom_t name)
        : server_(server), frage_(xcb_get_property(server, 0, fenster, name, XCB_GET_PROPERTY_TYPE_ANY, 0, 1))
    {
    }

    uint32_t Oder(uint32_t ohne) const
    {
        const AntwortPtr<xcb_get_property_reply_t> wert(xcb_get_property_reply(server_, frage_, nullptr));
        if (!wert || wert->format != 32 || xcb_get_property_value_length(wert.get()) < 4)
            return ohne;
        return *static_cast<const uint32_t *>(xcb_get_property_value(wert.get()));
    }

private:
    xcb_connection_t *server_;
    xcb_get_property_cookie_t frage_;
};

xcb_atom_t Atom(xcb_connection_t *server, std::string_view name)
{
    const AntwortPtr<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        server, xcb_intern_atom(server, 0, static_cast<uint16_t>(name.size()), name.data()), nullptr));
    return atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// The window that is active; none where no window manager says so.
Eigenschaft AktivesFenster(xcb_connection_t *server)
{
    static const xcb_atom_t name = Atom(server, "_NET_ACTIVE_WINDOW");
    return {server, xcb_setup_roots_iterator(xcb_get_setup(server)).data->root, name};
}

// Not 0 while a window manager has the window in its care. The toolkit may have destroyed it meanwhile.
Eigenschaft Verwaltung(xcb_connection_t *server, xcb_window_t fenster)
{
    static const xcb_atom_t name = Atom(server, "WM_STATE");
    return {server, fenster, name};
}

// Window managers give the keyboard to nobody for a moment, and from one window to the next: it stays where
// it is when they say so.
bool IstAktiv(const Eigenschaft &aktives, const QWindow *fenster)
{
    return aktives.Oder(Nummer(fenster)) == Nummer(fenster);
}

// Sees the mark that the program has sent to itself come back.
class Markenfilter final : public QAbstractNativeEventFilter
{
public:
    Markenfilter() { qGuiApp->installNativeEventFilter(this); }

    bool nativeEventFilter(const QByteArray & /*art*/, void *nachricht, qintptr * /*ergebnis*/) override
    {
        const auto &event = *static_cast<const xcb_generic_event_t *>(nachricht);
        const bool ist = (event.response_type & 0x7F) == XCB_CLIENT_MESSAGE &&
                         static_cast<const xcb_client_message_event_t *>(nachricht)->type == Marke;
        gesehen = gesehen || ist;
        return ist;
    }

    bool gesehen = false;
};

} // namespace

Tastaturgriff::Tastaturgriff(const QWindow *fenster, const QWindow *tastatur)
{
    xcb_connection_t *server = XServer();
    if (!server || !fenster || !tastatur || !Tastaturfrage(server).Hat(tastatur))
        return;
    const auto wunsch = xcb_grab_keyboard(server, 0, Nummer(fenster), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                          XCB_GRAB_MODE_SYNC);
    const AntwortPtr<xcb_grab_keyboard_reply_t> antwort(xcb_grab_keyboard_reply(server, wunsch, nullptr));
    if (!antwort || antwort->status != XCB_GRAB_STATUS_SUCCESS)
        return;
    halter_ = std::jthread([server](const std::stop_token &ende) {
        std::mutex sperre;
        std::unique_lock wartend(sperre);
        std::condition_variable_any().wait_for(wartend, ende, std::chrono::milliseconds(FristMs),
                                               [] { return false; });
        xcb_ungrab_keyboard(server, XCB_CURRENT_TIME);
        xcb_flush(server);
    });
}

Tastaturhalt::Tastaturhalt(const QWindow *fenster) : griff_(std::in_place, fenster, fenster)
{
    connect(&takt_, &QTimer::timeout, this, [this, fenster] {
        const QWindow *neu = QGuiApplication::focusWindow();
        if (neu && neu != fenster && (!XServer() || IstAktiv(AktivesFenster(XServer()), neu))) {
            takt_.stop();
            griff_.reset();
        }
    });
    takt_.start(TaktMs);
}

Tastaturrueckgabe::Tastaturrueckgabe(const QWindow *von, QWindow *an) : an_(an)
{
    xcb_connection_t *server = XServer();
    if (!server || !von || !an || !an->isVisible() || !Tastaturfrage(server).Hat(von))
        return;
    von_ = Nummer(von); // asked later, it would make a new one of a window that was destroyed
    // Held first: a key that came to `an` now would find it behind its dialog, and be lost.
    griff_.emplace(an, von);
    xcb_set_input_focus(server, XCB_INPUT_FOCUS_PARENT, Nummer(an), XCB_CURRENT_TIME);
}

// A window manager may give the keyboard back to `von` once more, as long as that one is there.
Tastaturrueckgabe::~Tastaturrueckgabe()
{
    const QDeadlineTimer frist(FristMs);
    const auto istDa = [this, server = XServer()] {
        const Eigenschaft verwaltung = Verwaltung(server, von_);
        const Eigenschaft aktives = AktivesFenster(server);
        const bool hat = Tastaturfrage(server).Hat(an_);
        const bool aktiv = IstAktiv(aktives, an_);
        return verwaltung.Oder(0) == 0 && aktiv && hat;
    };
    while (griff_ && !istDa() && !frist.hasExpired())
        QCoreApplication::processEvents();
}

void TastenAbholen(const QWindow *fenster)
{
    if (xcb_connection_t *server = XServer(); server && fenster) {
        Markenfilter filter;
        xcb_client_message_event_t marke{};
        marke.response_type = XCB_CLIENT_MESSAGE;
        marke.format = 32;
        marke.window = Nummer(fenster);
        marke.type = Marke;
        xcb_send_event(server, 0, marke.window, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char *>(&marke));
        xcb_flush(server);
        const QDeadlineTimer frist(AbholfristMs);
        while (!filter.gesehen && !frist.hasExpired())
            QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
}

} // namespace paukfix
