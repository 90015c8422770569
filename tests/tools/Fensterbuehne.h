// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkstatt.h"
#include "Werkzeugfenster.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace paukfix {

// The directory of card files with all that the tools' windows work on.
struct Fensterbuehne : Werkstatt
{
    Fensterbuehne() { konfig.ProgrammPfad = programm.path(); }

    QTemporaryDir programm;
};

template <typename Widget>
Widget *Control(const QWidget &window, const char *name)
{
    auto *found = window.findChild<Widget *>(QString::fromUtf8(name));
    if (!found)
        qFatal("no control %s", name);
    return found;
}

inline void Show(QWidget &window)
{
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

inline void Click(const QWidget &window, const char *name)
{
    QTest::mouseClick(Control<QWidget>(window, name), Qt::LeftButton);
}

inline void Type(const QWidget &window, const char *name, const QString &text)
{
    auto *field = Control<QLineEdit>(window, name);
    field->clear();
    QTest::keyClicks(field, text);
}

// What a label shows, letter by letter, without the mark of its key.
inline QString Shown(const QLabel *label)
{
    QString text = label->text();
    return label->buddy() ? text.remove(u'&') : text;
}

// Every control that takes the keyboard has a name and an accessible name.
inline void CheckNames(const QWidget &window)
{
    QVERIFY(!window.objectName().isEmpty());
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        bool inner = widget->objectName().startsWith("qt_");
        for (const QWidget *owner = widget->parentWidget(); owner && owner != &window;
             owner = owner->parentWidget())
            inner = inner || owner->inherits("QComboBox") || owner->inherits("QAbstractItemView");
        if (inner || widget->focusPolicy() == Qt::NoFocus)
            continue;
        QVERIFY2(!widget->objectName().isEmpty(), widget->metaObject()->className());
        QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
    }
}

} // namespace paukfix
