// SPDX-License-Identifier: Apache-2.0
#include "description/Injection.h"

#include "description/Diagnostics.h"
#include "description/Limits.h"
#include "description/Literals.h"
#include "description/Schema.h"
#include "description/XmlText.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace KxGenApi
{
namespace
{

std::string_view NameOf(const pugi::xml_node& element) { return element.attribute("Name").value(); }

// Calls visit(element) for all nodes in groups or not; those without a name are StructRegs.
template <typename Visit>
void ForEachNode(const pugi::xml_node& parent, const Visit& visit, unsigned depth = 0)
{
    if (depth > kMaxNesting)
        FailLimit({{}, {}, parent.name()}, depth, "nested groups", kMaxNesting);
    for (pugi::xml_node child = parent.first_child(); child; child = child.next_sibling()) {
        const NodeInfo* info = child.type() == pugi::node_element ? FindNodeKind(child.name()) : nullptr;
        if (info && info->tag == Tag::Group)
            ForEachNode(child, visit, depth + 1);
        else if (child.type() == pugi::node_element)
            visit(child);
    }
}

int64_t PriorityOf(const pugi::xml_node& element)
{
    return ParseInteger(Trimmed(element.attribute("MergePriority").value())).value_or(0);
}

/// The elements of two nodes of one kind.
class Merger
{
public:
    Merger(const NodeRules& rules, const pugi::xml_node& winner, const pugi::xml_node& loser)
        : m_rules(rules)
    {
        for (pugi::xml_node child = winner.first_child(); child; child = child.next_sibling())
            if (child.type() == pugi::node_element)
                Take(child);
        const size_t ofWinner = m_chosen.size();
        for (pugi::xml_node child = loser.first_child(); child; child = child.next_sibling())
            if (child.type() == pugi::node_element && IsMissing(child, ofWinner))
                Take(child);
        std::stable_sort(m_chosen.begin(), m_chosen.end(),
                         [](const Choice& a, const Choice& b) { return a.rank < b.rank; });
    }

    void WriteTo(pugi::xml_node target) const
    {
        for (const Choice& choice : m_chosen)
            target.append_copy(choice.element);
    }

private:
    struct Choice
    {
        pugi::xml_node element;
        uint8_t slot;
        uint8_t rank;
    };

    uint8_t SlotOf(const pugi::xml_node& element) const
    {
        const PropertyInfo* info = FindProperty(element.name());
        return info ? m_rules.slot[static_cast<size_t>(info->prop)] : NodeRules::kNotAllowed;
    }

    void Take(const pugi::xml_node& element)
    {
        const uint8_t slot = SlotOf(element);
        m_chosen.push_back({element, slot, slot == NodeRules::kNotAllowed ? uint8_t{0} : m_rules.rank[slot]});
    }

    // Address terms add up, so that a union of them would be an address that nobody meant.
    bool IsUnited(uint8_t slot) const
    {
        return !(m_rules.once >> slot & 1) && slot != m_rules.slot[static_cast<size_t>(Prop::Address)];
    }

    bool IsMissing(const pugi::xml_node& element, size_t ofWinner) const
    {
        const uint8_t slot = SlotOf(element);
        if (slot == NodeRules::kNotAllowed)
            return false;
        const auto covers = [&](const Choice& choice) {
            if (choice.slot != slot)
                return false;
            if (!IsUnited(slot))
                return true;
            const std::string_view name = NameOf(element);
            return name.empty() ? Trimmed(choice.element.text().get()) == Trimmed(element.text().get())
                                : NameOf(choice.element) == name;
        };
        return std::none_of(m_chosen.begin(), m_chosen.begin() + static_cast<ptrdiff_t>(ofWinner), covers);
    }

    const NodeRules& m_rules;
    std::vector<Choice> m_chosen;
};

void MergeNode(pugi::xml_node base, const pugi::xml_node& injected)
{
    const bool isInjectedFirst = PriorityOf(injected) >= PriorityOf(base);
    const pugi::xml_node winner = isInjectedFirst ? injected : base;
    const pugi::xml_node loser = isInjectedFirst ? base : injected;
    const NodeInfo* const kind = FindNodeKind(winner.name());
    pugi::xml_node parent = base.parent();
    if (kind && kind == FindNodeKind(loser.name()) && !RulesOf(kind->type).lenient) {
        pugi::xml_node merged = parent.insert_child_before(winner.name(), base);
        for (const pugi::xml_attribute attribute : winner.attributes())
            merged.append_copy(attribute);
        Merger(RulesOf(kind->type), winner, loser).WriteTo(merged);
    } else if (isInjectedFirst)
        parent.insert_copy_before(injected, base);
    else
        return;
    parent.remove_child(base);
}

} // namespace

void Inject(pugi::xml_node base, const pugi::xml_node& injected)
{
    std::unordered_map<std::string_view, pugi::xml_node> known;
    ForEachNode(base, [&known](const pugi::xml_node& element) { known.emplace(NameOf(element), element); });
    ForEachNode(injected, [&](const pugi::xml_node& element) {
        const auto found = NameOf(element).empty() ? known.end() : known.find(NameOf(element));
        if (found == known.end())
            base.append_copy(element);
        else {
            MergeNode(found->second, element);
            // A second definition in the injected file itself is for the duplicate check to find.
            known.erase(found);
        }
    });
}

} // namespace KxGenApi
