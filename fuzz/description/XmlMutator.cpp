// SPDX-License-Identifier: Apache-2.0
// Changes descriptions element by element. Changes of single bytes hardly ever leave a description that is
// accepted, and what is worth testing comes after that.

#include "description/Schema.h"

#include <pugixml.hpp>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <sstream>
#include <string>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace
{

using Random = std::minstd_rand;

constexpr const char* kTexts[] = {
    "0",           "1",          "-1",      "4",           "8",       "0xFFFFFFFFFFFFFFFF",
    "1.5",         "INF",        "Yes",     "No",          "RO",      "WO",
    "RW",          "BigEndian",  "V",       "FROM",        "TO/0",    "(V=0)?1:V",
    "V*V",         "1<<63",      "NoCache", "WriteAround", "Boolean", "9223372036854775807",
    "IPV4Address", "MACAddress", "Signed",  "1;2;3",       "Varying", "Decreasing"};
constexpr const char* kSuffixes[] = {"", ".Min", ".Max", ".Inc", ".Value", ".Enum", ".Entry.A"};

template <typename List>
auto& Any(List& list, Random& random)
{
    return list[random() % std::size(list)];
}

class XmlMutation
{
public:
    XmlMutation(pugi::xml_document& document, Random& random)
        : m_random(random)
    {
        Collect(document.first_child());
    }

    void Apply()
    {
        if (m_elements.size() < 3)
            return;
        pugi::xml_node element = m_elements[1 + m_random() % (m_elements.size() - 1)];
        pugi::xml_node other = m_elements[1 + m_random() % (m_elements.size() - 1)];
        switch (m_random() % 9) {
        case 0:
            element.parent().remove_child(element);
            break;
        case 1:
            other.parent().insert_copy_before(element, other);
            break;
        case 2:
            Rename(element);
            break;
        case 3:
            element.text().set(Any(kTexts, m_random));
            break;
        case 4:
            element.text().set(other.text().get());
            break;
        case 5:
            if (!m_names.empty())
                element.text().set((Any(m_names, m_random) + Any(kSuffixes, m_random)).c_str());
            break;
        case 6:
            AddProperty(element);
            break;
        case 7:
            element.attribute("Name").set_value(("N" + std::to_string(m_random() % 20)).c_str());
            break;
        default:
            CopyUnderNewName(element);
            break;
        }
    }

private:
    void Collect(const pugi::xml_node& element)
    {
        if (element.type() != pugi::node_element || m_elements.size() > 500)
            return;
        m_elements.push_back(element);
        if (element.attribute("Name"))
            m_names.emplace_back(element.attribute("Name").value());
        for (const pugi::xml_node child : element.children())
            Collect(child);
    }

    std::string AnyProperty()
    {
        return std::string(
            KxGenApi::InfoOf(static_cast<KxGenApi::Prop>(m_random() % KxGenApi::kPropCount)).name);
    }

    void Rename(pugi::xml_node element)
    {
        const auto type = static_cast<KxGenApi::NodeType>(m_random() % KxGenApi::kNodeTypeCount);
        element.set_name(element.attribute("Name") ? std::string(KxGenApi::InfoOf(type).name).c_str()
                                                   : AnyProperty().c_str());
    }

    // A reference or a literal in the place where it belongs, as a rule.
    void AddProperty(pugi::xml_node element)
    {
        pugi::xml_node node = element.attribute("Name") ? element : element.parent();
        const std::string name = AnyProperty();
        const KxGenApi::PropertyInfo* const info = KxGenApi::FindProperty(name);
        const KxGenApi::NodeInfo* const kind = KxGenApi::FindNodeKind(node.name());
        if (!info || !kind || m_names.empty())
            return;
        const KxGenApi::NodeRules& rules = KxGenApi::RulesOf(kind->type);
        const auto rank = [&rules](const KxGenApi::PropertyInfo* property) {
            const uint8_t slot = property ? rules.slot[static_cast<size_t>(property->prop)] : uint8_t{0xFF};
            return slot < rules.rank.size() ? rules.rank[slot] : uint8_t{0xFF};
        };
        pugi::xml_node next = node.first_child();
        while (next && rank(KxGenApi::FindProperty(next.name())) <= rank(info))
            next = next.next_sibling();
        pugi::xml_node added =
            next ? node.insert_child_before(name.c_str(), next) : node.append_child(name.c_str());
        if (info->words)
            added.text().set(std::string(info->words->first[m_random() % info->words->count].text).c_str());
        else if (info->kind == KxGenApi::ValueKind::Reference || info->kind == KxGenApi::ValueKind::Variable)
            added.text().set(Any(m_names, m_random).c_str());
        else
            added.text().set(Any(kTexts, m_random));
        if (info->kind >= KxGenApi::ValueKind::Variable)
            added.append_attribute("Name").set_value("V");
    }

    void CopyUnderNewName(const pugi::xml_node& element)
    {
        const pugi::xml_node copy = element.parent().insert_copy_after(element, element);
        copy.attribute("Name").set_value(("N" + std::to_string(m_random() % 20)).c_str());
    }

    Random& m_random;
    std::vector<pugi::xml_node> m_elements;
    std::vector<std::string> m_names;
};

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed)
{
    Random random(seed);
    pugi::xml_document document;
    if (random() % 4 == 0 || !document.load_buffer(data, size))
        return LLVMFuzzerMutate(data, size, maxSize);
    XmlMutation(document, random).Apply();
    if (random() % 2)
        XmlMutation(document, random).Apply();
    std::ostringstream out;
    document.save(out, "", pugi::format_raw | pugi::format_no_declaration);
    const std::string text = out.str();
    if (text.empty() || text.size() > maxSize)
        return LLVMFuzzerMutate(data, size, maxSize);
    std::memcpy(data, text.data(), text.size());
    return text.size();
}
