#include "host/dxf/scan.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <unordered_map>

#include "host/dxf/tokens.h"

namespace host::dxf {

namespace {

constexpr std::string_view kBinaryMark{"AutoCAD Binary DXF\r\n\x1a\0", 22};
constexpr std::string_view kUtf8Mark{"\xEF\xBB\xBF"};
constexpr char kNoDrawing[] = "this is no DXF drawing";
constexpr char kUnknownCode[] = "group code outside the documented ranges, kept as it is";

// The text of a line for a message: what can be printed, and not too much of it.
std::string Quote(std::string_view text) {
    constexpr std::size_t kLongest = 40;
    std::string quoted = "\"";
    for (char c : text.substr(0, (std::min)(text.find_first_of("\r\n"), kLongest)))
        quoted += c >= ' ' && c < 127 ? c : '?';
    return quoted + "\"";
}

// Notes of the record that is being scanned, group by group.
class RecordBuilder {
public:
    explicit RecordBuilder(Source& source) : source_(source) {
        for (std::size_t i = 0; i < source.types.size(); ++i)
            numbers_.emplace(source.types[i], static_cast<std::uint16_t>(i));
        // Records of large drawings have some 150 bytes; small ones cost nothing either way.
        constexpr std::size_t kUsualRecord = 128;
        source.records.reserve(source.bytes.size / kUsualRecord);
    }

    void Begin(const Tag& tag) {
        Source::Record record;
        record.begin = tag.begin;
        record.type = TypeNumber(Trim(tag.value));
        source_.records.push_back(record);
        current_ = &source_.records.back();
        marks_ = 0;
        inGroup_ = inXdata_ = false;
        hasLayer_ = hasLinetype_ = hasName_ = hasSpace_ = false;
        handleCode_ = record.type == kDimstyle ? 105 : 5;
    }

    bool HasRecord() const { return current_ != nullptr; }
    bool AtEof() const { return current_->type == kEof; }

    void Add(const Tag& tag) {
        if (tag.code == 102) inGroup_ = Trim(tag.value).substr(0, 1) == "{";
        if (tag.code == kXdataApplication) inXdata_ = true;
        if (inGroup_ || inXdata_) return;
        switch (tag.code) {
            case 100:
                ++marks_;
                break;
            case 5:
            case 105:
                if (tag.code == handleCode_ && marks_ == 0 && current_->handle == 0)
                    HandleFromText(tag.value, current_->handle);
                break;
            case 330:
                if (marks_ == 0 && current_->owner == 0) HandleFromText(tag.value, current_->owner);
                break;
            case 8:
                if (!hasLayer_) Note(tag, hasLayer_, current_->layer, current_->layerLength);
                break;
            case 6:
                if (!hasLinetype_)
                    Note(tag, hasLinetype_, current_->linetype, current_->linetypeLength);
                break;
            case 2:
                if (!hasName_) Note(tag, hasName_, current_->name, current_->nameLength);
                break;
            case 67:
                if (!hasSpace_ && marks_ <= 1) {
                    hasSpace_ = true;
                    current_->paperSpace = source_.Int(tag) == 1;
                }
                break;
            default:
                break;
        }
    }

private:
    void Note(const Tag& tag, bool& seen, std::uint32_t& offset, std::uint32_t& length) {
        seen = true;
        offset = static_cast<std::uint32_t>(
            static_cast<std::size_t>(tag.value.data() - source_.bytes.data.get()) -
            current_->begin);
        length = static_cast<std::uint32_t>(tag.value.size());
    }

    std::uint16_t TypeNumber(std::string_view name) {
        if (lastType_ < source_.types.size() && source_.types[lastType_] == name) return lastType_;
        const auto found = numbers_.find(std::string(name));
        if (found != numbers_.end()) return lastType_ = found->second;
        // Broken files can hold more names than the index has room for; the last one stands for the
        // rest, whose records are kept as they are like any unknown ones.
        constexpr std::size_t kMostTypes = 0xFFFF;
        if (source_.types.size() == kMostTypes) return lastType_ = kMostTypes - 1;
        lastType_ = static_cast<std::uint16_t>(source_.types.size());
        source_.types.emplace_back(source_.types.size() == kMostTypes - 1 ? std::string() : name);
        numbers_.emplace(name, lastType_);
        return lastType_;
    }

    Source& source_;
    Source::Record* current_ = nullptr;
    std::unordered_map<std::string, std::uint16_t> numbers_;
    std::uint16_t lastType_ = 0xFFFF;
    int marks_ = 0;
    int handleCode_ = 5;
    bool inGroup_ = false, inXdata_ = false;
    bool hasLayer_ = false, hasLinetype_ = false, hasName_ = false, hasSpace_ = false;
};

bool IsFiniteBits(std::string_view bytes) {
    // An exponent of all ones is infinity or no number (IEEE 754).
    return (static_cast<unsigned char>(bytes[7]) & 0x7F) != 0x7F ||
           (static_cast<unsigned char>(bytes[6]) & 0xF0) != 0xF0;
}

class Scanner {
public:
    Scanner(Source& source, ScanFault& fault, Report& report)
        : source_(source), fault_(fault), report_(report), records_(source) {}

    template <class Tokens>
    bool Run(Tokens tokens) {
        constexpr bool kIsText =
            std::is_same_v<Tokens, TextTokens<'\n'>> || std::is_same_v<Tokens, TextTokens<'\r'>>;
        Tag tag;
        for (;;) {
            const Step step = tokens.Next(tag);
            if (step == Step::kFault) return TokenFault(tokens.position(), tokens.fault());
            if (step == Step::kEnd) break;
            if (!(kIsText ? IsTextValueRight(tag) : IsBinaryValueRight(tag))) return false;
            if (tag.code == 0) {
                records_.Begin(tag);
                if (!IsStartRight(tag)) return false;
                if (records_.AtEof()) {
                    source_.end = tag.end;
                    return true;
                }
            } else if (records_.HasRecord()) {
                records_.Add(tag);
            }
            source_.end = tag.end;
        }
        return IsEndRight();
    }

private:
    bool Fail(std::size_t offset, const std::string& reason) {
        fault_ = {reason, source_.Place(offset)};
        return false;
    }

    // A file whose very first line is no group code is something else altogether.
    bool TokenFault(std::size_t position, const char* reason) {
        const std::string_view rest = source_.bytes.View().substr(position);
        if (source_.info.form != Form::kText) return Fail(position, reason);
        const std::string line = Quote(rest);
        const bool isCode = std::strstr(reason, "not a number") != nullptr;
        const std::string text = isCode ? "the group code " + line + " is not a number" : reason;
        return Fail(position, source_.records.empty() ? kNoDrawing + (": " + text) : text);
    }

    bool IsStartRight(const Tag& tag) {
        if (source_.records.size() > 1) return true;
        return source_.Is(0, kSection) || source_.Is(0, kEof) ||
               Fail(tag.begin, std::string(kNoDrawing) + ": it does not begin with a section");
    }

    // Without EOF a file counts as cut off unless its last line is complete.
    bool IsEndRight() {
        if (source_.records.empty()) {
            fault_ = {std::string(kNoDrawing) + ": it holds no section", ""};
            return false;
        }
        const char last = source_.bytes.View()[source_.end - 1];
        const bool complete = source_.info.form != Form::kText || last == '\n' || last == '\r';
        if (!complete && source_.records.back().type != kEndsec)
            return Fail(source_.end - 1, "the file ends in the middle of a value");
        report_.Add("the file has no EOF mark", source_.Place(source_.end));
        return true;
    }

    bool IsTextValueRight(const Tag& tag) {
        switch (KindOf(tag.code)) {
            case ValueKind::kReal:
                return IsRealText(tag.value) || ValueFault(tag, " is not a number");
            case ValueKind::kInt16:
            case ValueKind::kInt32:
            case ValueKind::kInt64:
            case ValueKind::kBool:
                return IsIntText(tag.value) || ValueFault(tag, " is not a whole number");
            case ValueKind::kUnknown:
                report_.Add(kUnknownCode,
                            report_.WantsPlace(kUnknownCode)
                                ? source_.Place(tag.begin) + ": group " + std::to_string(tag.code)
                                : std::string());
                return true;
            default:
                return true;
        }
    }

    bool IsBinaryValueRight(const Tag& tag) {
        if (KindOf(tag.code) != ValueKind::kReal || IsFiniteBits(tag.value)) return true;
        return Fail(tag.begin,
                    "the value of group " + std::to_string(tag.code) + " is not a number");
    }

    bool ValueFault(const Tag& tag, const char* what) {
        const std::size_t offset =
            static_cast<std::size_t>(tag.value.data() - source_.bytes.data.get());
        return Fail(offset, "the value " + Quote(tag.value) + " of group " +
                                std::to_string(tag.code) + what);
    }

    Source& source_;
    ScanFault& fault_;
    Report& report_;
    RecordBuilder records_;
};

bool StartsWith(std::string_view text, std::string_view head) {
    return text.substr(0, head.size()) == head;
}

// What the first bytes already rule out; empty when they may be a drawing.
std::string FaultOfFirstBytes(std::string_view bytes) {
    if (bytes.empty()) return "the file is empty";
    if (StartsWith(bytes, "AC10") || StartsWith(bytes, "AC1.") || StartsWith(bytes, "AC2."))
        if (bytes.size() >= 6 && bytes.find_first_of("\r\n") != 6)
            return "this is a DWG drawing (" + std::string(bytes.substr(0, 6)) +
                   "); save it as DXF and read that";
    if (StartsWith(bytes, "\xFF\xFE") || StartsWith(bytes, "\xFE\xFF"))
        return std::string(kNoDrawing) + ": it is text in UTF-16";
    return {};
}

// Line ends and padding of a text file, by its first lines.
void FindLayout(Source& source, std::size_t begin) {
    const std::string_view text = source.bytes.View().substr(begin);
    const std::size_t feed = text.find('\n');
    if (feed == std::string_view::npos) {
        source.layout.lineEnd = text.find('\r') == std::string_view::npos ? "\n" : "\r";
    } else if (feed > 0 && text[feed - 1] == '\r') {
        source.layout.lineEnd = "\r\n";
    }
}

bool ScanRecords(Source& source, ScanFault& fault, Report& report) {
    const std::string_view bytes = source.bytes.View();
    Scanner scanner(source, fault, report);
    if (StartsWith(bytes, kBinaryMark)) {
        // The first tag is 0 SECTION: a second zero byte belongs to a code of two bytes.
        const std::size_t begin = kBinaryMark.size();
        const bool wide = bytes.size() > begin + 1 && bytes[begin + 1] == '\0';
        source.info.form = wide ? Form::kBinaryWide : Form::kBinaryShort;
        return wide ? scanner.Run(BinaryTokens<true>(bytes, begin, bytes.size()))
                    : scanner.Run(BinaryTokens<false>(bytes, begin, bytes.size()));
    }
    const std::size_t begin = StartsWith(bytes, kUtf8Mark) ? kUtf8Mark.size() : 0;
    FindLayout(source, begin);
    const bool done = source.layout.lineEnd == "\r"
                          ? scanner.Run(TextTokens<'\r'>(bytes, begin, bytes.size()))
                          : scanner.Run(TextTokens<'\n'>(bytes, begin, bytes.size()));
    if (done) source.layout.padded = bytes[source.records[0].begin] == ' ';
    return done;
}

// $ACADVER is "AC1032"; very old files say "AC2.10" or nothing.
void ReadVersion(Source& source, std::string_view text) {
    text = Trim(text);
    source.info.versionStated = true;
    if (!StartsWith(text, "AC")) return;
    text.remove_prefix(2);
    const bool digits = text.size() == 4 && text.find_first_not_of("0123456789") == text.npos;
    source.info.version = digits ? static_cast<int>(IntFromText(text)) : kVersionR10;
}

void ReadHeaderFacts(Source& source) {
    for (std::size_t i = 0; i < source.records.size(); ++i) {
        if (!source.Is(i, kSection) || source.Name(i) != "HEADER") continue;
        TagWalker walker(source, i);
        std::string_view variable;
        for (Tag tag; walker.Next(tag);) {
            if (tag.code == 9) variable = Trim(tag.value);
            if (tag.code == 1 && variable == "$ACADVER") ReadVersion(source, tag.value);
            if (tag.code == 3 && variable == "$DWGCODEPAGE")
                source.info.codePage = std::string(Trim(tag.value));
        }
        return;
    }
}

// Eight bytes at a time: all but a few drawings are plain ASCII to the end.
bool HasHighBytes(std::string_view bytes) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    const char* p = bytes.data();
    const char* end = p + bytes.size();
    for (; end - p >= 8; p += 8) {
        std::uint64_t word;
        std::memcpy(&word, p, sizeof word);
        if ((word & kHighBits) != 0) return true;
    }
    return std::any_of(p, end, [](char c) { return static_cast<signed char>(c) < 0; });
}

Utf8Statistics CountUtf8(const Source& source) {
    Utf8Statistics found;
    if (source.info.form == Form::kText) {
        const std::string_view bytes = source.bytes.View();
        if (HasHighBytes(bytes)) found.Add(bytes.substr(0, source.end));
        return found;
    }
    TagWalker walker(source, source.records.front().begin, source.end);
    for (Tag tag; walker.Next(tag);)
        if (KindOf(tag.code) == ValueKind::kText && HasHighBytes(tag.value)) found.Add(tag.value);
    return found;
}

// Chinese, Japanese and Korean take three bytes in UTF-8. A file of such a page whose bytes would
// only make two-byte characters is what it says it is.
bool IsEastAsian(const std::string& charset) {
    for (const char* page : {"CP932", "CP936", "CP949", "CP950", "JOHAB"})
        if (charset == page) return true;
    return false;
}

// Every system has these; only opening them would tell, and that costs what reading a small drawing
// costs.
bool IsEverywhere(const std::string& charset) {
    return charset.compare(0, 5, "CP125") == 0 || charset == "UTF-8" || IsEastAsian(charset);
}

void ChooseCodec(Source& source, Report& report) {
    FileInfo& info = source.info;
    std::string charset = CharsetOfCodePage(info.codePage);
    if (charset.empty() && !info.codePage.empty() && info.version < kVersionR2007)
        report.Add("unknown code page, read as ANSI_1252", info.codePage);
    const Utf8Statistics found = CountUtf8(source);
    const bool plain = found.invalid + found.twoByte + found.longer == 0;
    if (!charset.empty() && !(plain && IsEverywhere(charset)) &&
        !CharsetConverter(charset).IsKnown()) {
        report.Add("the system does not know this code page, read as ANSI_1252", info.codePage);
        charset.clear();
    }
    const bool looksUtf8 = found.invalid == 0 && found.twoByte + found.longer > 0 &&
                           (found.longer > 0 || !IsEastAsian(charset));
    TextCodec::Mode mode = TextCodec::Mode::kCodePage;
    if (info.version >= kVersionR2007) {
        mode = TextCodec::Mode::kUtf8;
        if (found.invalid > 0) {
            const bool mostly = found.twoByte + found.longer >= found.invalid;
            mode = mostly ? TextCodec::Mode::kUtf8OrCodePage : TextCodec::Mode::kCodePage;
            report.Add(
                "text that is not UTF-8 in a file of R2007 or later is read by its code page",
                info.codePage.empty() ? "ANSI_1252" : info.codePage);
        }
    } else if (looksUtf8 && charset != "UTF-8") {
        mode = TextCodec::Mode::kUtf8;
        report.Add("text is UTF-8 although the file says otherwise",
                   "$DWGCODEPAGE " + (info.codePage.empty() ? "missing" : info.codePage));
    } else if (charset == "UTF-8") {
        mode = TextCodec::Mode::kUtf8;
    }
    info.utf8 = mode != TextCodec::Mode::kCodePage;
    source.codec = std::make_unique<TextCodec>(mode, charset == "UTF-8" ? std::string() : charset);
}

}  // namespace

std::unique_ptr<Source> Scan(FileBytes bytes, ScanFault& fault, Report& report) {
    auto source = std::make_unique<Source>();
    source->bytes = std::move(bytes);
    const std::string reason = FaultOfFirstBytes(source->bytes.View());
    if (!reason.empty()) {
        fault = {reason, ""};
        return nullptr;
    }
    if (!ScanRecords(*source, fault, report)) return nullptr;
    ReadHeaderFacts(*source);
    ChooseCodec(*source, report);
    return source;
}

}  // namespace host::dxf
