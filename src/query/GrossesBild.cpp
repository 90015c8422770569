// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "GrossesBild.h"

#include <QEvent>
#include <QPainter>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

GrossesBild::GrossesBild(QWidget *fenster) : QWidget(fenster)
{
    setObjectName(u"GrossesBild"_s);
    setAccessibleName(u"Bild, groß"_s);
    setAccessibleDescription(u"Eine Taste oder ein Klick schließt es"_s);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setProperty("fokusring", false);
    fenster->installEventFilter(this);
    hide();
}

void GrossesBild::Zeigen(const QImage &bild)
{
    bild_ = bild;
    skaliert_ = {};
    vorher_ = window()->focusWidget();
    setGeometry(parentWidget()->rect());
    raise();
    show();
    setFocus();
}

QSize GrossesBild::Platz() const
{
    return (QSizeF(parentWidget()->size()) * devicePixelRatioF()).toSize();
}

void GrossesBild::Schliessen()
{
    hide();
    bild_ = {};
    skaliert_ = {};
    if (QWidget *vorher = std::exchange(vorher_, nullptr))
        vorher->setFocus();
}

// No key gets through, not even one that is somebody's shortcut.
bool GrossesBild::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        event->accept();
        return true;
    case QEvent::KeyPress:
    case QEvent::MouseButtonRelease:
        event->accept();
        Schliessen();
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyRelease:
        event->accept();
        return true;
    default:
        return QWidget::event(event);
    }
}

bool GrossesBild::eventFilter(QObject * /*fenster*/, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    else if (event->type() == QEvent::Hide && isVisibleTo(parentWidget()))
        Schliessen();
    return false;
}

void GrossesBild::paintEvent(QPaintEvent *)
{
    constexpr int Rand = 12;
    QPainter maler(this);
    maler.fillRect(rect(), QColor(0x18, 0x19, 0x1C)); // as around a slide
    if (bild_.isNull())
        return;
    const qreal dichte = devicePixelRatioF();
    const QSize platz = (QSizeF(size() - QSize(2 * Rand, 2 * Rand)) * dichte).toSize();
    const QSize soll = bild_.size().scaled(platz, Qt::KeepAspectRatio).expandedTo({1, 1});
    if (skaliert_.size() != soll) {
        skaliert_ = QPixmap::fromImage(bild_.scaled(soll, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        skaliert_.setDevicePixelRatio(dichte);
    }
    const QSizeF logisch = QSizeF(soll) / dichte;
    maler.drawPixmap(QPointF((width() - logisch.width()) / 2, (height() - logisch.height()) / 2), skaliert_);
}

} // namespace paukfix
