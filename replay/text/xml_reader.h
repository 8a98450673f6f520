#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace replay::text {

enum class XmlToken { kStart, kEnd, kText, kDone, kDamaged };

// Where and why a document is damaged.
struct XmlDamage {
    std::size_t offset = 0;
    std::string reason;
};

// A pull parser for UTF-8 XML that validates while it reads and knows the byte offset of each
// token. Copies nothing: names, attributes and texts are views of the document with entities not
// decoded. Keeps line ends. Skips comments and processing instructions. Reports a self-closed
// element as a start and an end.
class XmlReader {
public:
    // Starts at this byte offset.
    explicit XmlReader(std::string_view document, std::size_t offset = 0);

    // Reads the next token.
    XmlToken Next();

    // Skips the rest of the element after its start tag.
    XmlToken SkipElement();

    // Reads the rest of the element after its start tag and returns its decoded text. Skips child
    // elements.
    std::optional<std::string> ReadText();

    // Properties of the current token.
    std::string_view Name() const { return name_; }
    std::string_view Text() const { return text_; }
    bool IsLiteral() const { return literal_; }  // a CDATA section: nothing to decode
    std::optional<std::string_view> Attribute(std::string_view name) const;
    std::size_t Depth() const { return open_.size(); }
    std::size_t TokenBegin() const { return tokenBegin_; }
    std::size_t TokenEnd() const { return at_; }
    const XmlDamage& Damage() const { return damage_; }

private:
    struct NamedValue {
        std::string_view name;
        std::string_view value;
    };

    bool SkipAside();
    bool SkipPast(std::string_view start, std::string_view end);
    XmlToken ReadCharacters();
    XmlToken ReadLiteral();
    XmlToken ReadStartTag();
    XmlToken ReadEndTag();
    bool ReadAttribute();
    std::string_view ReadName();
    void SkipBlanks();
    bool CheckUtf8(std::size_t begin, std::size_t end);
    bool CheckText(std::size_t begin, std::size_t end);
    XmlToken Fail(std::size_t offset, std::string_view reason);
    bool StartsWith(std::string_view text) const { return document_.substr(at_).starts_with(text); }

    std::string_view document_;
    std::size_t at_ = 0;
    std::size_t tokenBegin_ = 0;
    std::string_view name_;
    std::string_view text_;
    bool literal_ = false;
    bool endPending_ = false;
    bool damaged_ = false;
    std::vector<NamedValue> attributes_;
    std::vector<std::string_view> open_;
    XmlDamage damage_;
};

}  // namespace replay::text
