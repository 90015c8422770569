// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RichTextLosses.h"

#include "RichText.h"
#include "RtfKeywords.h"
#include "RtfSymbolField.h"
#include "RtfTokenizer.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace paukfix {

namespace {
using Loss = RichTextLoss;

constexpr qsizetype MaxSavedGroups = 10'000; // as in the reader

struct Destination
{
    std::string_view word;
    std::optional<Loss> loss; // nothing: nobody misses it
};

// Groups that are skipped whole, sorted by word. One that is skipped and not listed is another loss.
constexpr auto Destinations = std::to_array<Destination>({
    {"aftncn", {}},
    {"aftnsep", {}},
    {"aftnsepc", {}},
    {"annotation", Loss::Comments},
    {"atnauthor", Loss::Comments},
    {"atndate", Loss::Comments},
    {"atnid", Loss::Comments},
    {"atnref", Loss::Comments},
    {"atrfend", Loss::Comments},
    {"atrfstart", Loss::Comments},
    {"background", Loss::Drawings},
    {"bkmkend", {}},
    {"bkmkstart", {}},
    {"colorschememapping", {}},
    {"colortbl", {}},
    {"comment", {}}, // of the document's information
    {"datafield", Loss::Fields},
    {"datastore", {}},
    {"defchp", {}},
    {"defpap", {}},
    {"do", Loss::Drawings},
    {"docvar", {}},
    {"expandedcolortbl", {}},
    {"fchars", {}},
    {"filetbl", {}},
    {"fonttbl", {}},
    {"footer", Loss::HeadersFooters},
    {"footerf", Loss::HeadersFooters},
    {"footerl", Loss::HeadersFooters},
    {"footerr", Loss::HeadersFooters},
    {"footnote", Loss::Footnotes},
    {"formfield", Loss::Fields},
    {"ftncn", {}},
    {"ftnsep", {}},
    {"ftnsepc", {}},
    {"generator", {}},
    {"header", Loss::HeadersFooters},
    {"headerf", Loss::HeadersFooters},
    {"headerl", Loss::HeadersFooters},
    {"headerr", Loss::HeadersFooters},
    {"info", {}},
    {"latentstyles", {}},
    {"lchars", {}},
    {"listoverridetable", {}}, // a list is where a paragraph is in one
    {"listpicture", {}},
    {"listtable", {}},
    {"mmathPr", {}},
    {"moMath", Loss::Formulas},
    {"moMathPara", Loss::Formulas},
    {"nesttableprops", Loss::Tables},
    {"nonesttables", {}}, // for readers that know no nested tables
    {"object", Loss::Objects},
    {"oldcprops", {}},
    {"oldpprops", {}},
    {"password", {}},
    {"passwordhash", {}},
    {"pgdsctbl", {}},
    {"pgptbl", {}},
    {"pict", Loss::Pictures},
    {"pn", Loss::Lists},
    {"pnseclvl", {}},
    {"protusertbl", {}},
    {"revtbl", {}},
    {"rsidtbl", {}},
    {"rxe", Loss::Fields},
    {"shp", Loss::Drawings},
    {"shpgrp", Loss::Drawings},
    {"shppict", Loss::Pictures},
    {"stylesheet", {}},
    {"tblstylematrix", {}},
    {"tc", Loss::Fields},
    {"template", {}},
    {"themedata", {}},
    {"txe", Loss::Fields},
    {"userprops", {}},
    {"wgrffmtfilter", {}},
    {"windowcaption", {}},
    {"writereservation", {}},
    {"writereservhash", {}},
    {"xe", Loss::Fields},
    {"xmlnstbl", {}},
});
static_assert(std::ranges::is_sorted(Destinations, {}, &Destination::word));

enum class Reach
{
    Once,      // lost where it stands
    Numbered,  // the same, unless its number is 0
    Paragraph, // holds for a paragraph's text while its number is not 0
    Characters // holds for text while it is on
};

struct Property
{
    std::string_view word;
    Reach reach;
    Loss loss;
};

// Sorted by word.
constexpr auto Properties = std::to_array<Property>({
    {"animtext", Reach::Characters, Loss::Effects},
    {"brdrdash", Reach::Once, Loss::Borders},
    {"brdrdb", Reach::Once, Loss::Borders},
    {"brdrdot", Reach::Once, Loss::Borders},
    {"brdrhair", Reach::Once, Loss::Borders},
    {"brdrs", Reach::Once, Loss::Borders},
    {"brdrsh", Reach::Once, Loss::Borders},
    {"brdrth", Reach::Once, Loss::Borders},
    {"brdrtriple", Reach::Once, Loss::Borders},
    {"brdrwavy", Reach::Once, Loss::Borders},
    {"caps", Reach::Characters, Loss::Effects},
    {"cb", Reach::Characters, Loss::Highlight},
    {"cbpat", Reach::Paragraph, Loss::Highlight},
    {"cell", Reach::Once, Loss::Tables},
    {"chbrdr", Reach::Once, Loss::Borders},
    {"chcbpat", Reach::Characters, Loss::Highlight},
    {"chshdng", Reach::Characters, Loss::Highlight},
    {"column", Reach::Once, Loss::Breaks},
    {"deleted", Reach::Characters, Loss::HiddenText},
    {"embo", Reach::Characters, Loss::Effects},
    {"expnd", Reach::Characters, Loss::Effects},
    {"expndtw", Reach::Characters, Loss::Effects},
    {"highlight", Reach::Characters, Loss::Highlight},
    {"impr", Reach::Characters, Loss::Effects},
    {"ls", Reach::Numbered, Loss::Lists},
    {"nestcell", Reach::Once, Loss::Tables},
    {"outl", Reach::Characters, Loss::Effects},
    {"page", Reach::Once, Loss::Breaks},
    {"row", Reach::Once, Loss::Tables},
    {"scaps", Reach::Characters, Loss::Effects},
    {"sect", Reach::Once, Loss::Breaks},
    {"shad", Reach::Characters, Loss::Effects},
    {"shading", Reach::Paragraph, Loss::Highlight},
    {"striked", Reach::Characters, Loss::Effects},
    {"trowd", Reach::Once, Loss::Tables},
    {"uldb", Reach::Characters, Loss::Effects},
    {"ulhwave", Reach::Characters, Loss::Effects},
    {"ulldash", Reach::Characters, Loss::Effects},
    {"ulth", Reach::Characters, Loss::Effects},
    {"ulthd", Reach::Characters, Loss::Effects},
    {"ulthdash", Reach::Characters, Loss::Effects},
    {"ulthdashd", Reach::Characters, Loss::Effects},
    {"ulthdashdd", Reach::Characters, Loss::Effects},
    {"ulthldash", Reach::Characters, Loss::Effects},
    {"ululdbwave", Reach::Characters, Loss::Effects},
    {"ulw", Reach::Characters, Loss::Effects},
    {"v", Reach::Characters, Loss::HiddenText},
});
static_assert(std::ranges::is_sorted(Properties, {}, &Property::word));
static_assert(Properties.size() <= 64, "a bit for each");

template <typename Entry, std::size_t count>
const Entry *Find(const std::array<Entry, count> &table, std::string_view word)
{
    const auto *const found =
        std::lower_bound(table.begin(), table.end(), word,
                         [](const Entry &entry, std::string_view sought) { return entry.word < sought; });
    return found != table.end() && found->word == word ? found : nullptr;
}

// Each bit is a property that is on.
quint64 BitsOf(bool (*chosen)(const Property &))
{
    quint64 bits = 0;
    for (std::size_t i = 0; i < Properties.size(); ++i)
        if (chosen(Properties[i]))
            bits |= quint64{1} << i;
    return bits;
}

bool IsUnderline(std::string_view word)
{
    return word.substr(0, 2) == "ul";
}

class LossFinder
{
public:
    explicit LossFinder(QStringView rtf) : tokens_(rtf) {}

    RichTextLosses Find();

private:
    void BeginGroup();
    void EndGroup();
    void Word();
    void Apply(const Property &property);
    void Skip(std::string_view word);
    void SkippedToken(RtfTokenizer::Kind kind);
    void Text();

    RtfTokenizer tokens_;
    RichTextLosses losses_;
    quint64 on_ = 0; // the properties that hold for the text to come
    std::vector<quint64> groups_;
    qsizetype depth_ = 0;
    qsizetype skipDepth_ = 0; // the group that is skipped, 0 for none
    bool groupStart_ = false; // the token before was the group's brace
    bool unnamed_ = false;    // the group that is skipped has not yet said what it is
    bool inField_ = false;    // it is a field's instruction
    QString instruction_;     // of the field
};

RichTextLosses LossFinder::Find()
{
    using Kind = RtfTokenizer::Kind;
    for (Kind kind = tokens_.Next(); kind != Kind::End; kind = tokens_.Next()) {
        if (kind == Kind::GroupEnd && depth_ <= 1)
            break;
        const bool atStart = std::exchange(groupStart_, false);
        if (kind == Kind::GroupStart) {
            BeginGroup();
        } else if (kind == Kind::GroupEnd) {
            EndGroup();
        } else if (skipDepth_ != 0) {
            SkippedToken(kind);
        } else if (kind == Kind::Word) {
            Word();
        } else if (kind == Kind::Symbol && tokens_.symbol() == u'*') {
            unnamed_ = atStart && depth_ > 1;
            skipDepth_ = unnamed_ ? depth_ : 0;
        } else if (kind != Kind::Symbol) {
            Text();
        }
    }
    return losses_;
}

void LossFinder::BeginGroup()
{
    ++depth_;
    groupStart_ = true;
    if (depth_ <= MaxSavedGroups)
        groups_.push_back(on_);
}

void LossFinder::EndGroup()
{
    if (skipDepth_ == depth_) {
        skipDepth_ = 0;
        unnamed_ = false;
        // A symbol is read as the character that it is.
        if (std::exchange(inField_, false) && !ReadSymbolField(instruction_))
            losses_ |= Loss::Fields;
    }
    if (depth_ <= MaxSavedGroups) {
        on_ = groups_.back();
        groups_.pop_back();
    }
    --depth_;
}

void LossFinder::Word()
{
    const std::string_view word = tokens_.word();
    const RtfKeyword *const keyword = FindRtfKeyword(word);
    const RtfAction action = keyword != nullptr ? keyword->action : RtfAction::Plain;
    if (action == RtfAction::Skip || action == RtfAction::FontTable || action == RtfAction::ColourTable ||
        word == "fldinst") {
        if (depth_ > 1)
            Skip(word);
    } else if (word == "plain") {
        static const quint64 characters =
            BitsOf([](const Property &p) { return p.reach == Reach::Characters; });
        on_ &= ~characters;
    } else if (word == "pard") {
        static const quint64 paragraph =
            BitsOf([](const Property &p) { return p.reach == Reach::Paragraph; });
        on_ &= ~paragraph;
    } else if (const Property *const property = paukfix::Find(Properties, word)) {
        Apply(*property);
    } else if (IsUnderline(word)) {
        static const quint64 underlines = BitsOf([](const Property &p) { return IsUnderline(p.word); });
        on_ &= ~underlines;
    } else if (action == RtfAction::Character || action == RtfAction::Unicode) {
        Text();
    }
}

void LossFinder::Apply(const Property &property)
{
    const bool on = !tokens_.hasParameter() || tokens_.parameter() != 0;
    if (property.reach == Reach::Once || property.reach == Reach::Numbered) {
        if (on || property.reach == Reach::Once)
            losses_ |= property.loss;
        return;
    }
    const quint64 bit = quint64{1} << static_cast<unsigned>(&property - Properties.data());
    on_ = on ? on_ | bit : on_ & ~bit;
}

void LossFinder::Skip(std::string_view word)
{
    skipDepth_ = depth_;
    unnamed_ = false;
    if (word == "fldinst") {
        inField_ = true;
        instruction_.clear();
        return;
    }
    if (const Destination *const known = paukfix::Find(Destinations, word)) {
        if (known->loss)
            losses_ |= *known->loss;
    } else {
        losses_ |= Loss::Other;
    }
}

// In a group that is skipped: its name, and what a field is.
void LossFinder::SkippedToken(RtfTokenizer::Kind kind)
{
    using Kind = RtfTokenizer::Kind;
    if (unnamed_)
        Skip(kind == Kind::Word ? tokens_.word() : std::string_view());
    const qsizetype room = MaxSymbolInstruction - instruction_.size();
    if (!inField_ || room <= 0)
        return;
    if (kind == Kind::Text)
        instruction_ += tokens_.text().left(room);
    else if (kind == Kind::Symbol)
        instruction_ += QChar(tokens_.symbol());
}

void LossFinder::Text()
{
    if (on_ == 0)
        return;
    RichTextLosses here;
    for (std::size_t i = 0; i < Properties.size(); ++i)
        if ((on_ >> i & 1U) != 0)
            here |= Properties[i].loss;
    // What is hidden is lost as a whole.
    losses_ |= here.testFlag(Loss::HiddenText) ? RichTextLosses(Loss::HiddenText) : here;
}
} // namespace

RichTextLosses LossesOf(QStringView text)
{
    return IsRtf(text) ? LossFinder(text).Find() : RichTextLosses();
}

} // namespace paukfix
