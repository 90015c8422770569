// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ContentPlaces.h"

#include "CardRecord.h"

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

ContentPlaces::ContentPlaces(const std::vector<int> &columns)
    : columns_(columns),
      typ_(At(u"Antworttyp"_s)),
      question_(At(u"Frage_Klartext"_s)),
      formattedQuestion_(At(u"Frage"_s)),
      picture_(At(u"Picture_1_Name"_s)),
      sound_(At(u"Picture_6_Name"_s))
{
    for (int i = 1; i <= 5; ++i) {
        plain_.push_back(At(u"Antwort_%1_Klartext"_s.arg(i)));
        formatted_.push_back(At(u"Antwort_%1"_s.arg(i)));
        ticks_.push_back(At(u"Antwort_ch_%1"_s.arg(i)));
    }
}

Karteninhalt ContentPlaces::Of(const std::vector<CopiedValue> &values) const
{
    const auto number = [&](std::size_t place) {
        const bool there = place < values.size() && values[place].kind == CopiedValue::Kind::Number;
        return there ? values[place].number : 0;
    };
    const auto text = [&](std::size_t place) {
        const bool there = place < values.size() && values[place].kind == CopiedValue::Kind::Text;
        return there ? std::string_view(values[place].text) : std::string_view();
    };
    const auto either = [&](std::size_t plain, std::size_t formatted) {
        const std::string_view words = text(plain);
        return words.empty() ? text(formatted) : words;
    };
    Karteninhalt content;
    content.typ = number(typ_);
    content.frage = either(question_, formattedQuestion_);
    content.bild = text(picture_);
    content.ton = text(sound_);
    for (std::size_t i = 0; i < content.antworten.size(); ++i) {
        content.antworten[i] = either(plain_[i], formatted_[i]);
        content.richtig[i] = number(ticks_[i]) != 0;
    }
    return content;
}

// Behind the last one where a card is copied without it.
std::size_t ContentPlaces::At(const QString &name) const
{
    const auto place = std::find(columns_.begin(), columns_.end(), CardColumnIndex(name));
    return static_cast<std::size_t>(place - columns_.begin());
}

} // namespace paukfix
