// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Dienste.h"
#include "Kartenblatt.h"
#include "Medienkopie.h"

#include <QObject>

#include <functional>

namespace paukfix {

class CardStore;

// Makes a file beside the card file of what was dropped or pasted, where its writer agrees to the copy, and
// gives its name; nothing where not, or where it cannot be, which was told.
std::optional<QString> MediumAnbieten(const Medium &medium, std::size_t moment, const QString &verzeichnis,
                                      Meldungen &meldungen);

// Takes pictures and sounds that are dropped on the form, or pasted into it, for the first moment that has
// none yet.
class Medienannahme final : public QObject
{
public:
    // The text boxes among the fields hand over what is not theirs; form and all other fields are watched.
    Medienannahme(const CardStore &kartei, Meldungen &meldungen, Bildnamen &namen, QWidget *form,
                  const QList<QWidget *> &felder);

    std::function<void()> angenommen = [] {}; // a name was set

    bool Passt(const QMimeData &mime) const;
    // Returns at once: a drop is not over before, and must not wait for a question.
    void Nehmen(const QMimeData &mime);

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    void Anbieten(const Medium &medium);

    const CardStore &kartei_;
    Meldungen &meldungen_;
    Bildnamen &namen_;
};

} // namespace paukfix
