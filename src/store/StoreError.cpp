// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "StoreError.h"

StoreError::StoreError(int number, const QString &text)
    : std::runtime_error(text.toStdString()), number_(number)
{
}

QString StoreError::Text() const
{
    return QString::fromUtf8(what());
}

QString ErrorText(const std::exception &error)
{
    return QString::fromUtf8(error.what());
}
