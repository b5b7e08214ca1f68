#include "apps/qzenvelope/PartOptions.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <iterator>
#include <utility>

#include "apps/qzenvelope/OptionNumbers.h"
#include "product/base/Words.h"

namespace app {
namespace {

template <class Value>
using Words = std::pair<const char*, Value>;

const Words<SplitRule::Kind> kSplits[] = {{"line", SplitRule::Kind::Line},
                                          {"layers", SplitRule::Kind::Layers},
                                          {"auto", SplitRule::Kind::Auto}};
const Words<TipSide> kTips[] = {{"left", TipSide::Left},   {"right", TipSide::Right},
                                {"top", TipSide::Top},     {"bottom", TipSide::Bottom},
                                {"start", TipSide::Start}, {"end", TipSide::End}};
const Words<Placement::Zero> kZeros[] = {{"tip", Placement::Zero::Tip},
                                         {"shank", Placement::Zero::Shank},
                                         {"axis-start", Placement::Zero::AxisStart}};
const Words<Placement::Direction> kDirections[] = {
    {"left", Placement::Direction::Left}, {"right", Placement::Direction::Right},
    {"z+", Placement::Direction::Up},     {"z-", Placement::Direction::Down},
    {"x+", Placement::Direction::Right},  {"x-", Placement::Direction::Left}};

template <class Value, size_t n>
bool Find(const Words<Value> (&words)[n], const std::string& text, Value& value) {
    for (const auto& [word, meaning] : words)
        if (text == word) {
            value = meaning;
            return true;
        }
    return false;
}

[[noreturn]] void Refuse(const char* option, const std::string& text, const char* remedy) {
    throw Failure(Fault::Request, std::string(option) + ": " + Quoted(text) + " " + remedy);
}

bool LooksLikeNumber(const std::string& text) {
    return text.find_first_of("0123456789") != std::string::npos;
}

void ReadSplit(const std::string& text, SplitRule& rule) {
    if (text.empty() || Find(kSplits, text, rule.kind)) return;
    if (!LooksLikeNumber(text))
        Refuse("--split", text,
               Tr("is no way to split; give a distance from the tip, line, layers or auto"));
    rule.kind = SplitRule::Kind::Length;
    rule.length = ReadNumbers("--split", text, 1, Tr("give a distance from the tip"))[0];
    if (rule.length <= 0)
        Refuse("--split", text, Tr("leaves no cutting part; give a positive distance"));
}

void ReadZero(const std::string& text, Placement& placement) {
    if (text.empty() || Find(kZeros, text, placement.zero)) return;
    if (!LooksLikeNumber(text))
        Refuse("--zero", text, Tr("is no place; give tip, shank, axis-start or X,Y"));
    const auto n = ReadNumbers("--zero", text, 2, Tr("give tip, shank, axis-start or X,Y"));
    placement.zero = Placement::Zero::At;
    placement.at = {n[0], n[1]};
}

void ReadColour(const char* option, const std::string& text, unsigned& rgb) {
    if (text.empty()) return;
    const char* const end = text.data() + text.size();
    unsigned value = 0;
    const char* const begin = text.data() + (text[0] == '#' ? 1 : 0);
    const auto [at, error] = std::from_chars(begin, end, value, 16);
    if (error != std::errc() || at != end || end - begin != 6)
        Refuse(option, text, Tr("is no colour; give six hexadecimal digits, RRGGBB"));
    rgb = value;
}

}  // namespace

void DeclareParts(CLI::App& command, PartTexts& texts) {
    command.add_option(
        "--split", texts.split,
        Tr("tell the cutting part from the rest: at a distance from the tip; line: at "
           "the line across the section; layers: contours on layers CUT and NOCUT; "
           "auto: by a line, else by layers"));
    command.add_option(
        "--tip", texts.tip,
        Tr("the end that cuts: left, right, top, bottom, or start or end of the axis "
           "(the one end that comes to a point, else the shorter one, with a warning)"));
    command.add_option(
        "--zero", texts.zero,
        Tr("zero of solids and profile: tip, shank, axis-start, or X,Y of the drawing "
           "(as drawn)"));
    command.add_option("--direction", texts.direction,
                       Tr("where the tip points in solids and profile: left, right, z+, z-, x+, x- "
                          "(as drawn)"));
    command.add_option("--cut-colour", texts.cutColour,
                       Tr("colour of the cutting part, RRGGBB (ffff00)"));
    command.add_option("--nocut-colour", texts.restColour,
                       Tr("colour of the rest, RRGGBB (808080)"));
}

PartRequest ReadParts(const PartTexts& texts) {
    PartRequest parts;
    ReadSplit(texts.split, parts.split);
    if (!texts.tip.empty() && !Find(kTips, texts.tip, parts.tip))
        Refuse("--tip", texts.tip, Tr("is no end; give left, right, top, bottom, start or end"));
    ReadZero(texts.zero, parts.placement);
    if (!texts.direction.empty() && !Find(kDirections, texts.direction, parts.placement.direction))
        Refuse("--direction", texts.direction,
               Tr("is no direction; give left, right, z+, z-, x+ or x-"));
    ReadColour("--cut-colour", texts.cutColour, parts.colours.cut);
    ReadColour("--nocut-colour", texts.restColour, parts.colours.rest);
    return parts;
}

}  // namespace app
