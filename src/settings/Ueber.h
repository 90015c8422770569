// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Meldungen.h"

#include <QDialog>

class QPushButton;

namespace paukfix {

class RichTextBox;

// The about box: the text of the file "ueber.rtf".
class über final : public QDialog
{
public:
    // Says what went wrong where the text cannot be read; the box is empty then.
    über(const QString &ueberRtf, Meldungen &meldungen, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void GanzeZeilenZeigen();

    RichTextBox *RichTextBox1_ = nullptr;
    QPushButton *Command1_ = nullptr;
};

} // namespace paukfix
