#include "replay/text/xml_reader.h"

#include "replay/text/blanks.h"
#include "replay/text/utf8.h"
#include "replay/text/xml_text.h"

namespace replay::text {
namespace {

constexpr std::string_view kNameEnds = " \t\r\n/>=<'\"&";

}  // namespace

XmlReader::XmlReader(std::string_view document, std::size_t offset)
    : document_(document), at_(offset) {}

XmlToken XmlReader::Next() {
    if (damaged_) {
        return XmlToken::kDamaged;
    }
    if (endPending_) {
        endPending_ = false;
        open_.pop_back();
        return XmlToken::kEnd;
    }
    while (SkipAside()) {
    }
    if (damaged_) {
        return XmlToken::kDamaged;
    }
    tokenBegin_ = at_;
    if (at_ == document_.size()) {
        if (open_.empty()) {
            return XmlToken::kDone;
        }
        return Fail(at_, "the text ends inside <" + std::string(open_.back()) + ">");
    }
    if (document_[at_] != '<') {
        return ReadCharacters();
    }
    if (StartsWith("<![CDATA[")) {
        return ReadLiteral();
    }
    return StartsWith("</") ? ReadEndTag() : ReadStartTag();
}

XmlToken XmlReader::SkipElement() {
    const std::size_t outside = Depth() - 1;
    XmlToken token = XmlToken::kStart;
    while (Depth() > outside && token != XmlToken::kDamaged) {
        token = Next();
    }
    return token;
}

std::optional<std::string> XmlReader::ReadText() {
    const std::size_t outside = Depth() - 1;
    std::string text;
    while (Depth() > outside) {
        const XmlToken token = Next();
        if (token == XmlToken::kDamaged) {
            return std::nullopt;
        }
        if (token == XmlToken::kText && Depth() == outside + 1) {
            text += literal_ ? std::string(text_) : DecodeXml(text_);
        }
    }
    return text;
}

std::optional<std::string_view> XmlReader::Attribute(std::string_view name) const {
    for (const NamedValue& attribute : attributes_) {
        if (attribute.name == name) {
            return attribute.value;
        }
    }
    return std::nullopt;
}

// Skips one comment, instruction or byte order mark. Returns false if there is none here.
bool XmlReader::SkipAside() {
    if (at_ == 0 && StartsWith("\xEF\xBB\xBF")) {
        at_ = 3;
        return true;
    }
    if (StartsWith("<!--")) {
        return SkipPast("<!--", "-->");
    }
    if (StartsWith("<?")) {
        return SkipPast("<?", "?>");
    }
    return false;
}

// Skips text from `start` to `end`. The end is searched after `start`, which may contain part of
// it.
bool XmlReader::SkipPast(std::string_view start, std::string_view end) {
    const std::size_t found = document_.find(end, at_ + start.size());
    if (found == std::string_view::npos) {
        Fail(at_, "no \"" + std::string(end) + "\" follows");
        return false;
    }
    if (!CheckUtf8(at_, found)) {
        return false;
    }
    at_ = found + end.size();
    return true;
}

XmlToken XmlReader::ReadCharacters() {
    std::size_t end = document_.find('<', at_);
    if (end == std::string_view::npos) {
        end = document_.size();
    }
    if (!CheckText(at_, end)) {
        return XmlToken::kDamaged;
    }
    text_ = document_.substr(at_, end - at_);
    literal_ = false;
    if (open_.empty() && !Trim(text_).empty()) {
        return Fail(at_, "text outside any element");
    }
    at_ = end;
    return open_.empty() ? Next() : XmlToken::kText;
}

XmlToken XmlReader::ReadLiteral() {
    constexpr std::string_view kOpen = "<![CDATA[";
    const std::size_t begin = at_ + kOpen.size();
    if (open_.empty()) {
        return Fail(at_, "text outside any element");
    }
    if (!SkipPast(kOpen, "]]>")) {
        return XmlToken::kDamaged;
    }
    text_ = document_.substr(begin, at_ - 3 - begin);
    literal_ = true;
    return XmlToken::kText;
}

XmlToken XmlReader::ReadStartTag() {
    ++at_;
    name_ = ReadName();
    if (name_.empty()) {
        return Fail(tokenBegin_, "\"<\" without an element's name");
    }
    if (!CheckUtf8(tokenBegin_, at_)) {
        return XmlToken::kDamaged;
    }
    attributes_.clear();
    for (;;) {
        SkipBlanks();
        if (StartsWith("/>")) {
            at_ += 2;
            endPending_ = true;
            break;
        }
        if (StartsWith(">")) {
            ++at_;
            break;
        }
        if (!ReadAttribute()) {
            return XmlToken::kDamaged;
        }
    }
    open_.push_back(name_);
    return XmlToken::kStart;
}

XmlToken XmlReader::ReadEndTag() {
    at_ += 2;
    name_ = ReadName();
    SkipBlanks();
    if (!StartsWith(">")) {
        return Fail(tokenBegin_, "end tag without \">\"");
    }
    ++at_;
    if (open_.empty()) {
        return Fail(tokenBegin_, "</" + std::string(name_) + "> closes nothing");
    }
    if (open_.back() != name_) {
        return Fail(tokenBegin_, "</" + std::string(name_) + "> where </" +
                                     std::string(open_.back()) + "> belongs");
    }
    open_.pop_back();
    return XmlToken::kEnd;
}

bool XmlReader::ReadAttribute() {
    const std::size_t begin = at_;
    const std::string_view name = ReadName();
    SkipBlanks();
    if (name.empty() || !StartsWith("=")) {
        Fail(begin, "the tag <" + std::string(name_) + "> does not end");
        return false;
    }
    if (!CheckUtf8(begin, at_)) {
        return false;
    }
    ++at_;
    SkipBlanks();
    const char quote = at_ < document_.size() ? document_[at_] : '\0';
    const std::size_t end =
        quote == '\'' || quote == '"' ? document_.find(quote, at_ + 1) : std::string_view::npos;
    if (end == std::string_view::npos) {
        Fail(at_, "the value of the attribute " + std::string(name) + " does not end");
        return false;
    }
    if (!CheckText(at_ + 1, end)) {
        return false;
    }
    attributes_.push_back({name, document_.substr(at_ + 1, end - at_ - 1)});
    at_ = end + 1;
    return true;
}

std::string_view XmlReader::ReadName() {
    std::size_t end = document_.find_first_of(kNameEnds, at_);
    if (end == std::string_view::npos) {
        end = document_.size();
    }
    const std::string_view name = document_.substr(at_, end - at_);
    at_ = end;
    return name;
}

void XmlReader::SkipBlanks() {
    const std::size_t next = document_.find_first_not_of(kBlanks, at_);
    at_ = next == std::string_view::npos ? document_.size() : next;
}

// Reports the first bytes that are not UTF-8.
bool XmlReader::CheckUtf8(std::size_t begin, std::size_t end) {
    const std::size_t bad = FindInvalidUtf8(document_.substr(begin, end - begin));
    if (bad != std::string_view::npos) {
        Fail(begin + bad, "not UTF-8");
    }
    return bad == std::string_view::npos;
}

// Reports the first error in the text: bytes that are not UTF-8, a "<" in an attribute or an
// unknown entity.
bool XmlReader::CheckText(std::size_t begin, std::size_t end) {
    if (!CheckUtf8(begin, end)) {
        return false;
    }
    const std::string_view text = document_.substr(begin, end - begin);
    const std::size_t tag = text.find('<');
    if (tag != std::string_view::npos) {
        Fail(begin + tag, "\"<\" in an attribute");
        return false;
    }
    for (std::size_t at = text.find('&'); at != std::string_view::npos;
         at = text.find('&', at + 1)) {
        const std::size_t semicolon = text.find(';', at);
        if (semicolon == std::string_view::npos ||
            !EntityText(text.substr(at + 1, semicolon - at - 1))) {
            Fail(begin + at, "unknown entity");
            return false;
        }
    }
    return true;
}

XmlToken XmlReader::Fail(std::size_t offset, std::string_view reason) {
    damaged_ = true;
    damage_ = {offset, std::string(reason)};
    return XmlToken::kDamaged;
}

}  // namespace replay::text
