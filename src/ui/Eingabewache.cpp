// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Eingabewache.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWindow>

#include <algorithm>

// The toolkit's own way from a key to the shortcut that it may be, which its test library offers as well.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject *o, ulong timestamp, int k, Qt::KeyboardModifiers mods,
                                               const QString &text, bool autorep, ushort count);
QT_END_NAMESPACE

namespace paukfix {

namespace {

bool IstTaste(const QEvent &event)
{
    return event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease;
}

bool IstKlick(const QEvent &event)
{
    return event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonRelease ||
           event.type() == QEvent::MouseButtonDblClick;
}

bool IstDruck(const QEvent &event)
{
    return event.type() == QEvent::KeyPress || event.type() == QEvent::Shortcut ||
           event.type() == QEvent::MouseButtonPress;
}

// Whether a key that is sent past the window system was a shortcut; it has been done then.
bool AlsKuerzel(QObject *fenster, const QEvent &event)
{
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto &taste = static_cast<const QKeyEvent &>(event);
    return qt_sendShortcutOverrideEvent(fenster, static_cast<ulong>(taste.timestamp()), taste.key(),
                                        taste.modifiers(), taste.text(), taste.isAutoRepeat(),
                                        static_cast<ushort>(taste.count()));
}

bool IstLoslassen(const QEvent &event)
{
    return event.type() == QEvent::KeyRelease || event.type() == QEvent::MouseButtonRelease;
}

} // namespace

Eingabewache::Eingabewache(QWidget &box) : box_(box), ziel_(&box)
{
    QCoreApplication::instance()->installEventFilter(this);
}

Eingabewache::~Eingabewache() = default;

void Eingabewache::Halten()
{
    haelt_ = true;
    liefert_ = false;
}

bool Eingabewache::Unterbrochen()
{
    QCoreApplication::processEvents();
    return std::any_of(aufgehoben_.begin(), aufgehoben_.end(),
                       [](const Aufgehoben &eingabe) { return IstDruck(*eingabe.event); });
}

void Eingabewache::Weitergeben(QWidget &ziel)
{
    haelt_ = false;
    ziel_ = &ziel;
    Weiter();
}

void Eingabewache::Weiter()
{
    if (!aufgehoben_.empty())
        QMetaObject::invokeMethod(
            this, [this] { Liefern(); }, Qt::QueuedConnection);
}

void Eingabewache::Liefern()
{
    if (haelt_ || liefert_ || aufgehoben_.empty())
        return;
    if (!ziel_ || !ziel_->isVisible()) {
        aufgehoben_.clear();
        return;
    }
    if (HinterMeldung())
        return;
    const Aufgehoben eingabe = std::move(aufgehoben_.front());
    aufgehoben_.pop_front();
    QObject *empfaenger = eingabe.empfaenger;
    if (IstKlick(*eingabe.event) && ziel_ != &box_)
        empfaenger = nullptr;
    else if (IstTaste(*eingabe.event))
        empfaenger = ziel_->windowHandle();
    if (empfaenger) {
        liefert_ = true;
        if (!AlsKuerzel(empfaenger, *eingabe.event))
            QCoreApplication::sendEvent(empfaenger, eingabe.event.get());
        liefert_ = false;
    }
    Weiter();
}

// What is kept waits until the message is closed.
bool Eingabewache::HinterMeldung() const
{
    const QWidget *modal = QApplication::activeModalWidget();
    return modal && modal != ziel_;
}

bool Eingabewache::GehoertDazu(const QObject *objekt) const
{
    if (!objekt->isWindowType() && !objekt->isWidgetType())
        return !HinterMeldung(); // an action's shortcut
    const auto gehoert = [objekt](const QWidget *fenster) {
        const auto *teil = qobject_cast<const QWidget *>(objekt);
        return fenster && (objekt == fenster->windowHandle() || (teil && teil->window() == fenster));
    };
    return gehoert(&box_) || gehoert(ziel_);
}

// Whether what is released here was pressed among what is kept.
bool Eingabewache::Gedrueckt(const QEvent &loslassen) const
{
    return std::any_of(aufgehoben_.begin(), aufgehoben_.end(), [&](const Aufgehoben &eingabe) {
        const QEvent &event = *eingabe.event;
        if (loslassen.type() == QEvent::MouseButtonRelease)
            return event.type() == QEvent::MouseButtonPress;
        return event.type() == QEvent::KeyPress &&
               static_cast<const QKeyEvent &>(event).key() == static_cast<const QKeyEvent &>(loslassen).key();
    });
}

bool Eingabewache::eventFilter(QObject *objekt, QEvent *event)
{
    if (event->type() == QEvent::WindowUnblocked && objekt == ziel_)
        Weiter();
    if (liefert_ || (!haelt_ && aufgehoben_.empty()))
        return false;
    if (!(IstTaste(*event) || IstKlick(*event) || event->type() == QEvent::Shortcut) || !GehoertDazu(objekt))
        return false;
    if (IstLoslassen(*event) && !Gedrueckt(*event))
        return false;
    aufgehoben_.push_back({objekt, std::unique_ptr<QEvent>(event->clone())});
    return true;
}

} // namespace paukfix
