// SPDX-License-Identifier: Apache-2.0
#include "description/Description.h"
#include "description/DescriptionBuilder.h"
#include "description/Diagnostics.h"
#include "description/Injection.h"
#include "description/Literals.h"
#include "description/TreeMemory.h"
#include "description/XmlText.h"
#include "description/Zip.h"

#include <Base/GCException.h>

#include <cstring>
#include <new>
#include <utility>

namespace KxGenApi
{
namespace
{

constexpr unsigned kParseFlags = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol |
                                 pugi::parse_wconv_attribute | pugi::parse_embed_pcdata |
                                 pugi::parse_ws_pcdata_single | pugi::parse_doctype;

constexpr std::string_view kNameSpaces[] = {"http://www.genicam.org/GenApi/Version_1_0",
                                            "http://www.genicam.org/GenApi/Version_1_1"};

void Parse(pugi::xml_document& document, SourceText& source, TreeMemory& memory)
{
    memory.Expect(source.TagCount());
    const size_t end = source.Text().find_last_of('>') + 1;
    const std::string rest(Trimmed(source.Text().substr(end)));
    const pugi::xml_parse_result result = document.load_buffer_inplace(
        source.MutableText(), source.Text().size(), kParseFlags, pugi::encoding_utf8);
    if (result.status == pugi::status_out_of_memory)
        throw std::bad_alloc();
    if (!result)
        Fail({source.Locate(static_cast<size_t>(result.offset)), {}, {}},
             std::string("not well-formed XML: ") + result.description());
    // The parser looks for tags only and skips what is around them. Ahead of the first, tools leave lines of
    // their own.
    if (!rest.empty())
        Fail({source.Locate(end), {}, {}},
             "not well-formed XML: text after the last element: " + Quoted(rest));
}

// The only element of the document; the parser has made sure that there is one.
pugi::xml_node FindRoot(const pugi::xml_document& document, const SourceText& source)
{
    pugi::xml_node root;
    for (pugi::xml_node child = document.first_child(); child; child = child.next_sibling()) {
        // Entities of the document's own could stand for anything, of any size.
        if (child.type() == pugi::node_doctype && std::strchr(child.value(), '['))
            Fail({}, "a DOCTYPE with declarations is not allowed");
        if (child.type() != pugi::node_element)
            continue;
        if (root || LocalName(child.name()) != "RegisterDescription")
            Fail({PositionOf(child, source), {}, child.name()},
                 root ? "follows the end of RegisterDescription"
                      : "stands where RegisterDescription is expected");
        root = child;
    }
    return root;
}

void CheckNameSpace(const pugi::xml_node& root, const SourceText& source)
{
    const char* const colon = std::strchr(root.name(), ':');
    const std::string attribute = colon ? "xmlns:" + std::string(root.name(), colon) : "xmlns";
    const std::string_view nameSpace = root.attribute(attribute.c_str()).value();
    for (const std::string_view known : kNameSpaces)
        if (nameSpace == known)
            return;
    Fail({PositionOf(root, source), {}, root.name()},
         nameSpace.empty()
             ? "has no XML name space"
             : "has the XML name space " + Quoted(nameSpace) + ", which is not that of GenApi 1.0 or 1.1");
}

/// A file as text and as tree.
class ParsedFile
{
public:
    ParsedFile(std::string&& content, ContentType type, TreeMemory& memory)
        : m_source(Open(std::move(content), type))
    {
        Parse(m_document, m_source, memory);
        m_root = FindRoot(m_document, m_source);
        CheckNameSpace(m_root, m_source);
    }
    SourceText& Source() { return m_source; }
    const pugi::xml_node& Root() const { return m_root; }

private:
    static std::string Open(std::string&& content, ContentType type)
    {
        if (content.empty())
            throw INVALID_ARGUMENT_EXCEPTION("the description is empty");
        if (type == ContentType::ZippedXml || (type == ContentType::Automatic && IsZip(content)))
            return Unzip(content);
        return std::move(content);
    }

    SourceText m_source;
    pugi::xml_document m_document;
    pugi::xml_node m_root;
};

template <typename Action>
auto WithMemoryErrors(const Action& action)
{
    try {
        return action();
    } catch (const std::bad_alloc&) {
        throw BAD_ALLOC_EXCEPTION("not enough memory to read the description");
    }
}

} // namespace

std::shared_ptr<const Description> ReadDescription(std::string content, ContentType type)
{
    return WithMemoryErrors([&] {
        TreeMemory memory;
        ParsedFile file(std::move(content), type, memory);
        return DescriptionBuilder(file.Root(), file.Source()).Build();
    });
}

std::shared_ptr<const Description> ReadDescription(std::string content, std::string injected,
                                                   ContentType type)
{
    return WithMemoryErrors([&] {
        TreeMemory memory;
        ParsedFile file(std::move(content), type, memory);
        const ParsedFile injectedFile(std::move(injected), ContentType::Automatic, memory);
        Inject(file.Root(), injectedFile.Root());
        return DescriptionBuilder(file.Root(), file.Source()).Build();
    });
}

} // namespace KxGenApi
