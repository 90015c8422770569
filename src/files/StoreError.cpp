// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "StoreError.h"

#include <new>

namespace paukfix {

using namespace Qt::StringLiterals;

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
    if (dynamic_cast<const std::bad_alloc *>(&error) != nullptr)
        return u"Nicht genügend Speicher."_s;
    if (const auto *known = dynamic_cast<const StoreError *>(&error))
        return known->Text();
    return u"Unerwarteter Fehler (%1)."_s.arg(QString::fromUtf8(error.what()));
}

} // namespace paukfix
