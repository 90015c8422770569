// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPointer>
#include <QRadioButton>
#include <QTest>

namespace paukfix {

// The eyes and hands of a user on one window: finds its controls by name, reads what they show, clicks and
// types.
class Hand
{
public:
    Hand() = default;

    explicit Hand(QWidget &fenster) : griff_(&fenster) {}

    // Lets go of the window it had.
    void Nimm(QWidget &fenster) { griff_ = &fenster; }

    // Shows the window and waits until it has the keyboard.
    void Zeigen() const
    {
        griff_->show();
        QVERIFY(QTest::qWaitForWindowActive(griff_));
    }

    // A control or a menu entry.
    template <typename Teil = QWidget>
    Teil *Finde(const QString &name) const
    {
        for (QObject *teil : griff_->findChildren<QObject *>(name))
            if (auto *gefunden = dynamic_cast<Teil *>(teil))
                return gefunden;
        qFatal("no %s in %s", qPrintable(name), qPrintable(griff_->objectName()));
    }

    // What a control shows, letter by letter, without the mark of its key.
    static QString Gezeigt(const QWidget *teil)
    {
        for (const char *art : {"text", "plainText", "currentText"})
            if (const QVariant text = teil->property(art); text.isValid()) {
                const auto *label = qobject_cast<const QLabel *>(teil);
                const bool marke = qobject_cast<const QAbstractButton *>(teil) || (label && label->buddy());
                return marke ? text.toString().remove(u'&') : text.toString();
            }
        qFatal("%s shows no text", qPrintable(teil->objectName()));
    }

    QString Text(const QString &name) const { return Gezeigt(Finde(name)); }

    // At the control's place in its window: whatever lies on top of it gets the click.
    static void Klick(const QWidget *teil, Qt::MouseButton knopf = Qt::LeftButton)
    {
        // Beside its mark and text such a button takes no click.
        const bool mitMarke =
            qobject_cast<const QRadioButton *>(teil) || qobject_cast<const QCheckBox *>(teil);
        const QPoint ort = mitMarke ? QPoint(8, teil->height() / 2) : teil->rect().center();
        QTest::mouseClick(teil->window()->windowHandle(), knopf, {}, teil->mapTo(teil->window(), ort));
    }

    void Klick(const QString &name, Qt::MouseButton knopf = Qt::LeftButton) const
    {
        Klick(Finde(name), knopf);
    }

    // Whatever has the keyboard. A window that has just been closed hands it on with the next events.
    QWidget *Fokus() const
    {
        const auto da = [this] {
            QWidget *modal = QApplication::activeModalWidget();
            Aktivieren(modal ? modal : griff_.data());
            return QApplication::focusWidget() != nullptr;
        };
        if (!QTest::qWaitFor(da))
            qFatal("nothing has the focus");
        return QApplication::focusWidget();
    }

    QString FokusName() const { return Fokus()->objectName(); }

    void Taste(Qt::Key taste, Qt::KeyboardModifiers dazu = {}) const
    {
        QTest::keyClick(Fokus(), taste, dazu);
    }

    void Taste(const QString &feld, Qt::Key taste, Qt::KeyboardModifiers dazu = {}) const
    {
        Finde(feld)->setFocus();
        Taste(taste, dazu);
    }

    void Tippe(const QString &text) const
    {
        for (const QChar zeichen : text)
            QTest::sendKeyEvent(QTest::Click, Fokus(),
                                zeichen < u'\x80' ? QTest::asciiToKey(zeichen.toLatin1()) : Qt::Key_unknown,
                                zeichen, {});
    }

    void Tippe(const QString &feld, const QString &text) const
    {
        Finde(feld)->setFocus();
        Tippe(text);
    }

    // Types over what stands in the field.
    void Ersetze(const QString &feld, const QString &text) const
    {
        Finde(feld)->setFocus();
        Taste(Qt::Key_A, Qt::ControlModifier);
        Taste(Qt::Key_Delete);
        Tippe(text);
    }

    // The visible window of this name.
    static QWidget *Offen(const QString &name)
    {
        for (QWidget *fenster : QApplication::topLevelWidgets())
            if (fenster->objectName() == name && fenster->isVisible())
                return fenster;
        return nullptr;
    }

    // The same when it can be used.
    static QWidget *Bereit(const QString &name)
    {
        QWidget *fenster = Offen(name);
        const QWidget *modal = QApplication::activeModalWidget();
        if (!fenster || (modal && modal != fenster))
            return nullptr;
        Aktivieren(fenster);
        return fenster->isActiveWindow() ? fenster : nullptr;
    }

    // On the visible window of this name.
    static Hand An(const QString &name)
    {
        QWidget *fenster = Offen(name);
        if (!fenster)
            qFatal("no window %s", qPrintable(name));
        return Hand(*fenster);
    }

    // A window manager's work, which the platform of the tests does not do: when a dialog or menu closes, the
    // window behind it gets the keyboard.
    static void Aktivieren(QWidget *fenster)
    {
        const QWidget *aktiv = QApplication::activeWindow();
        const bool verdeckt = QApplication::activeModalWidget() == fenster && aktiv != fenster;
        if (!aktiv || !aktiv->isVisible() || (verdeckt && !QApplication::activePopupWidget()))
            fenster->activateWindow();
    }

private:
    QPointer<QWidget> griff_;
};

} // namespace paukfix
