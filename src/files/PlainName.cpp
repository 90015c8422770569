// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "PlainName.h"

#include <algorithm>

namespace paukfix {

namespace {

// With room for a number behind it.
constexpr qsizetype LongestName = 200; // bytes

bool IsHarmful(QChar c)
{
    const char16_t code = c.unicode();
    return code < 0x20 || code == 0x7f || (code >= 0x80 && code < 0xa0) || code == u'/' || code == u'\\' ||
           code == u':' || c.category() == QChar::Other_Format || code == 0x2028 || code == 0x2029;
}

} // namespace

bool IsPlainName(QStringView name)
{
    return !name.isEmpty() && name.front() != u'.' && name.front() != u' ' && name.back() != u' ' &&
           std::none_of(name.begin(), name.end(), IsHarmful) && name.isValidUtf16() &&
           name.toUtf8().size() <= LongestName;
}

} // namespace paukfix
