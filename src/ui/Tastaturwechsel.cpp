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

// As the server says: the toolkit learns of it later.
bool HatTastatur(xcb_connection_t *server, const QWindow *fenster)
{
    const AntwortPtr<xcb_get_input_focus_reply_t> antwort(
        xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr));
    return antwort && antwort->focus == Nummer(fenster);
}

// The first number in a property of a window; nothing where it has none.
std::optional<uint32_t> Eigenschaft(xcb_connection_t *server, xcb_window_t fenster, std::string_view name)
{
    const AntwortPtr<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        server, xcb_intern_atom(server, 1, static_cast<uint16_t>(name.size()), name.data()), nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE)
        return std::nullopt;
    const AntwortPtr<xcb_get_property_reply_t> wert(xcb_get_property_reply(
        server, xcb_get_property(server, 0, fenster, atom->atom, XCB_GET_PROPERTY_TYPE_ANY, 0, 1), nullptr));
    if (!wert || wert->format != 32 || xcb_get_property_value_length(wert.get()) < 4)
        return std::nullopt;
    return *static_cast<const uint32_t *>(xcb_get_property_value(wert.get()));
}

// Window managers give the keyboard to nobody for a moment, and from one window to the next: it stays where
// it is when they say so.
bool IstAktiv(xcb_connection_t *server, const QWindow *fenster)
{
    const xcb_window_t wurzel = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    return Eigenschaft(server, wurzel, "_NET_ACTIVE_WINDOW").value_or(Nummer(fenster)) == Nummer(fenster);
}

// Whether a window manager still has this window in its care.
bool IstVerwaltet(xcb_connection_t *server, const QWindow *fenster)
{
    return Eigenschaft(server, Nummer(fenster), "WM_STATE").value_or(0) != 0; // 0: withdrawn
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
    if (!server || !fenster || !tastatur || !HatTastatur(server, tastatur))
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
        if (neu && neu != fenster && (!XServer() || IstAktiv(XServer(), neu))) {
            takt_.stop();
            griff_.reset();
        }
    });
    takt_.start(TaktMs);
}

Tastaturrueckgabe::Tastaturrueckgabe(QWindow *von, QWindow *an) : von_(von), an_(an)
{
    xcb_connection_t *server = XServer();
    if (!server || !von || !an || !an->isVisible() || !HatTastatur(server, von))
        return;
    // Held first: a key that came to `an` now would find it behind its dialog, and be lost.
    griff_.emplace(an, von);
    xcb_set_input_focus(server, XCB_INPUT_FOCUS_PARENT, Nummer(an), XCB_CURRENT_TIME);
}

// A window manager may give the keyboard back to `von` once more, as long as that one is there.
Tastaturrueckgabe::~Tastaturrueckgabe()
{
    const QDeadlineTimer frist(FristMs);
    const auto istDa = [this, server = XServer()] {
        return !IstVerwaltet(server, von_) && IstAktiv(server, an_) && HatTastatur(server, an_);
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
