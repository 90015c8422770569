// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QHash>
#include <QImage>
#include <QTextBrowser>
#include <QUrl>

namespace paukfix {

// A page of the handbook as the desktop's font, the program's colours and the width of the window have it.
// Pictures are never wider than the page.
class Handbuchseite final : public QTextBrowser
{
public:
    explicit Handbuchseite(QWidget *parent = nullptr);

    QVariant loadResource(int type, const QUrl &name) override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QString Stil() const;
    QImage Eingepasst(const QImage &bild) const;

    QHash<QUrl, QImage> bilder_; // of all pages that were shown, as they are in their files
};

} // namespace paukfix
