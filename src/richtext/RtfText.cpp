// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RtfText.h"

#include "RtfSymbolField.h"
#include "SymbolFont.h"

#include <utility>

namespace paukfix {

namespace {
constexpr qsizetype MaxFontName = 128;
constexpr char16_t FirstNonAscii = 0x80;
constexpr int MaxCodePages = 64;
constexpr char16_t PrivateArea = 0xF000; // where symbol fonts have their places in Unicode

// Characters that are no places of a font.
bool IsNeutral(char16_t c)
{
    return c < 0x20 || c == u'\u00A0' || c == u'\u00AD' || c == u'\u2011' || c == u'\u2028' || c == u'\u2029';
}
} // namespace

RtfText::RtfText(QTextDocument &document, Input input)
    : input_(input), builder_(document, RtfDocumentBuilder::Formats::FromState)
{
}

void RtfText::SelectFont(int number)
{
    if (state.destination == Destination::FontTable) {
        FinishFont();
        tableFont_ = number;
        state.codePage = header.codePage;
        return;
    }
    const auto found = fonts_.find(number);
    const Font font = found != fonts_.end() ? found->second : Font();
    const bool saysNothing = font.codePage == 0;
    state.text.family = font.family;
    state.text.symbol = !font.family.isEmpty() &&
                        (font.codePage == SymbolCodePage || (saysNothing && IsSymbolFont(font.family)));
    state.codePage = saysNothing ? header.codePage : font.codePage;
}

void RtfText::FontOfKind(const RtfKeyword &keyword, int number)
{
    if (state.destination == Destination::FontTable) {
        if (keyword.action == RtfAction::Font)
            SelectFont(number);
        return;
    }
    if (keyword.action == RtfAction::TextKind)
        state.textKind = keyword.value;
    else if (state.textKind >= 0)
        state.kindFonts.at(static_cast<std::size_t>(state.textKind)) = number;
    else if (keyword.action == RtfAction::Font)
        state.font = number;
    else
        return; // for text from right to left
    const int ofKind =
        state.textKind >= 0 ? state.kindFonts.at(static_cast<std::size_t>(state.textKind)) : -1;
    SelectFont(ofKind >= 0 ? ofKind : state.font);
}

void RtfText::SetFontCodePage(int codePage)
{
    if (state.destination == Destination::FontTable)
        fonts_[tableFont_].codePage = state.codePage = codePage;
}

void RtfText::FinishFont()
{
    const QString name = std::exchange(fontName_, {}).trimmed();
    if (name.isEmpty())
        return;
    Font &font = fonts_[tableFont_];
    font.family = name;
    if (font.codePage == SymbolCodePage)
        symbolFamilies_.insert(name);
}

void RtfText::TextUnit(char16_t unit)
{
    constexpr char16_t LastByte = 0xFF;
    // ASCII may be the second byte of a character.
    bool isByte = unit < FirstNonAscii ? lead_ : input_ == Input::Bytes;
    if (isSymbolText() && unit <= LastByte)
        isByte = true;
    if (isByte)
        Byte(static_cast<unsigned char>(unit));
    else
        Character(unit);
}

void RtfText::Character(char16_t c)
{
    if (skipCharacters_ > 0) {
        --skipCharacters_;
        return;
    }
    FlushBytes();
    Put(c);
}

void RtfText::Byte(unsigned char byte)
{
    if (skipCharacters_ > 0) {
        --skipCharacters_;
        return;
    }
    if (isSymbolText()) {
        PutSymbol(byte);
        return;
    }
    RtfCodePage &codePage = CurrentCodePage();
    if (!codePage.isMultiByte()) {
        Put(codePage.Decode(byte));
        return;
    }
    bytes_ += static_cast<char>(byte);
    lead_ = !lead_ && codePage.IsLead(byte);
}

RtfCodePage &RtfText::CurrentCodePage()
{
    const bool known = codePages_.size() < MaxCodePages || codePages_.contains(state.codePage);
    const int codePage = known ? state.codePage : WesternCodePage;
    return codePages_.try_emplace(codePage, codePage).first->second;
}

void RtfText::FlushBytes()
{
    lead_ = false;
    if (bytes_.isEmpty())
        return;
    const QString text = CurrentCodePage().Decode(std::exchange(bytes_, {}));
    for (const QChar c : text)
        Put(c.unicode());
}

void RtfText::Unicode(int value)
{
    constexpr int Units = 0x10000;
    constexpr int LastCodePoint = 0x10FFFF;
    if (value < 0)
        value += Units; // written as a signed 16-bit number
    if (isSymbolText() && value > ' ' && value <= 0xFF) {
        PutSymbol(static_cast<unsigned char>(value)); // fonts take these for their places
    } else if (value >= 0 && value < Units) {
        Put(static_cast<char16_t>(value));
    } else if (value >= Units && value <= LastCodePoint) {
        Put(QChar::highSurrogate(static_cast<char32_t>(value)));
        Put(QChar::lowSurrogate(static_cast<char32_t>(value)));
    }
    skipCharacters_ = state.unicodeSkip;
}

void RtfText::Put(char16_t c)
{
    switch (state.destination) {
    case Destination::FontTable:
        if (c == u';')
            FinishFont();
        else if (fontName_.size() < MaxFontName)
            fontName_ += QChar(c);
        break;
    case Destination::ColourTable:
        if (c == u';')
            header.colours.push_back(std::exchange(header.tableColour, 0));
        break;
    case Destination::Body:
        if (!state.hidden)
            PutInBody(c);
        break;
    case Destination::FieldInstruction:
        if (instruction_.isEmpty())
            instructionText_ = state.text;
        if (instruction_.size() < MaxSymbolInstruction && !(instruction_.isEmpty() && c == u' '))
            instruction_ += QChar(c);
        break;
    case Destination::NestedRow:
        break;
    }
}

void RtfText::PutInBody(char16_t c)
{
    if (c == u'\u2029' || c == u'\f') {
        builder_.EndParagraph(state.paragraph, state.text);
    } else if (!state.text.symbol || IsNeutral(c)) {
        builder_.Append(c, state.text);
    } else if (c > PrivateArea && c <= PrivateArea + 0xFF) {
        PutSymbol(static_cast<unsigned char>(c - PrivateArea));
    } else {
        RtfCharState text = state.text; // the font has no such character
        text.symbol = false;
        text.family.clear();
        builder_.Append(c, text);
    }
}

void RtfText::PutSymbol(unsigned char place)
{
    if (!state.hidden)
        PutCodePoint(SymbolCharacter(state.text.family, place), state.text);
}

void RtfText::PutCodePoint(char32_t c, const RtfCharState &text)
{
    if (QChar::requiresSurrogates(c)) {
        builder_.Append(QChar::highSurrogate(c), text);
        builder_.Append(QChar::lowSurrogate(c), text);
    } else {
        builder_.Append(static_cast<char16_t>(c), text);
    }
}

void RtfText::BeginField()
{
    instruction_.clear();
}

// The result of such a field is often empty: other programs make it of the instruction.
void RtfText::FinishField()
{
    const auto field = ReadSymbolField(std::exchange(instruction_, {}));
    if (!field)
        return;
    state.fieldShown = true;
    if (state.hidden)
        return;
    RtfCharState text = instructionText_;
    if (field->halfPoints > 0)
        text.halfPoints = field->halfPoints;
    if (!field->family.isEmpty()) {
        text.family = field->family;
        text.symbol = IsSymbolFont(field->family) || symbolFamilies_.contains(field->family);
    }
    char32_t character = field->code;
    if (!field->unicode && character >= PrivateArea && character <= PrivateArea + 0xFF)
        character -= PrivateArea;
    text.symbol = text.symbol && !field->unicode && character <= 0xFF;
    if (text.symbol)
        character = SymbolCharacter(text.family, static_cast<unsigned char>(character));
    else if (!field->unicode && character <= 0xFF)
        character = RtfCodePage(WesternCodePage).Decode(static_cast<unsigned char>(character));
    PutCodePoint(character, text);
}

} // namespace paukfix
