// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QDialog>

class QLabel;
class QListWidget;
class QPushButton;

namespace paukfix {

// The file chooser: one file out of a directory, picked by its name. What was picked goes into the caller's
// `ChosenFileName`, and nothing when it is cancelled.
class Datausw final : public QDialog
{
public:
    explicit Datausw(QString &ChosenFileName, QWidget *parent = nullptr);

    // Lists the files of `verzeichnis` that match `muster` ("*.pzb", letter case does not matter), with
    // `vorgabe`, else the first one, selected.
    void Auflisten(const QString &verzeichnis, const QString &muster, const QString &vorgabe = {});

    void reject() override;

private:
    void laden_Click();

    QString &chosenFileName_;
    QListWidget *Filelist_ = nullptr;
    QLabel *Hinweis_ = nullptr;
    QPushButton *laden_ = nullptr;
    QPushButton *abbrechen_ = nullptr;
};

} // namespace paukfix
