// Escapes arbitrary text: an XML reader must read the original text back.

#include "base/xml_escape.h"
#include "input.h"
#include "replay/text/utf8.h"
#include "replay/text/xml_reader.h"
#include "replay/text/xml_text.h"

using namespace tavrin;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring text = fuzz::WideText({reinterpret_cast<const char*>(data), size});
    const std::string escaped = replay::text::ToUtf8(base::XmlEscape(text));
    const std::string document = "<e a='" + escaped + "' b=\"" + escaped + "\">" + escaped + "</e>";

    replay::text::XmlReader reader(document);
    fuzz::Require(reader.Next() == replay::text::XmlToken::kStart,
                  "the start of the element is read");
    for (const char* name : {"a", "b"}) {
        const auto value = reader.Attribute(name);
        fuzz::Require(value && replay::text::ToWide(replay::text::DecodeXml(*value)) == text,
                      "an attribute is the text");
    }
    const auto content = reader.ReadText();
    fuzz::Require(content && replay::text::ToWide(*content) == text, "the content is the text");
    fuzz::Require(reader.Next() == replay::text::XmlToken::kDone, "nothing follows");
    return 0;
}
