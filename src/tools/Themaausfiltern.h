// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkzeugfenster.h"

#include <QHash>

class QListWidget;

namespace paukfix {

// Makes a new card file with the cards of chosen topics.
class Themaausfiltern final : public Werkzeugfenster
{
public:
    Themaausfiltern(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent = nullptr);

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    void Form_Load();
    void AuswahlZeigen();
    void cmdDateiname_Click();
    void cmdOK_Click();
    QListWidget *ListeBauen(QGridLayout *listen, const QString &text, const QString &name,
                            const std::function<void()> &click);
    void lstÜbernehmen_Click();
    void lstNübernehmen_Click();
    void Wechseln(QListWidget &von, QListWidget &nach);

    QListWidget *lstÜbernehmen_ = nullptr;
    QListWidget *lstNübernehmen_ = nullptr;
    QLineEdit *lblDateiname_;
    Medienwahl *chkMedien_;
    QHash<QString, int> zahlen_; // cards of each topic
};

} // namespace paukfix
