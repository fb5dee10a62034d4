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

bool IsStruct(const pugi::xml_node& element)
{
    const NodeInfo* const info = FindNodeKind(element.name());
    return info && info->tag == Tag::StructReg;
}

// Calls visit(element) for all nodes and StructRegs in groups or not.
template <typename Visit>
void ForEachNode(const pugi::xml_node& parent, const Visit& visit, unsigned depth = 0)
{
    if (depth > kMaxNesting)
        FailLimit({{}, {}, parent.name()}, depth, "nested groups", kMaxNesting);
    for (pugi::xml_node child = parent.first_child(); child; child = child.next_sibling()) {
        const NodeInfo* const info =
            child.type() == pugi::node_element ? FindNodeKind(child.name()) : nullptr;
        if (info && info->tag == Tag::Group)
            ForEachNode(child, visit, depth + 1);
        else if (child.type() == pugi::node_element)
            visit(child);
    }
}

// What is called so is ignored when the tree is read. Taking it out would recurse as deep as it is nested.
void Hide(pugi::xml_node element) { element.set_name("Extension"); }

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

/// The tree that is added to.
class Injector
{
public:
    explicit Injector(const pugi::xml_node& base)
        : m_base(base)
    {
        ForEachNode(base, [this](const pugi::xml_node& element) {
            if (!IsStruct(element))
                return Know(element);
            for (const pugi::xml_node child : element.children())
                Know(child);
        });
    }

    void Add(const pugi::xml_node& injected)
    {
        if (IsStruct(injected))
            return AddStruct(injected);
        const pugi::xml_node known = TakeKnown(injected);
        if (!known)
            m_base.append_copy(injected);
        else if (IsMergeable(known, injected))
            Merge(known, injected);
        else if (Wins(injected, known)) {
            HideKnown(known);
            m_base.append_copy(injected);
        }
    }

private:
    void Know(const pugi::xml_node& element)
    {
        if (!NameOf(element).empty())
            m_known.emplace(NameOf(element), element);
    }

    // A node is known only once: a second definition in the injected file is for the duplicate check to find.
    pugi::xml_node TakeKnown(const pugi::xml_node& injected)
    {
        const auto found = NameOf(injected).empty() ? m_known.end() : m_known.find(NameOf(injected));
        if (found == m_known.end())
            return {};
        const pugi::xml_node element = found->second;
        m_known.erase(found);
        return element;
    }

    static int64_t PriorityOf(const pugi::xml_node& element)
    {
        const pugi::xml_node bearer = IsStruct(element.parent()) ? element.parent() : element;
        return ParseInteger(Trimmed(bearer.attribute("MergePriority").value())).value_or(0);
    }
    static bool Wins(const pugi::xml_node& injected, const pugi::xml_node& known)
    {
        return PriorityOf(injected) >= PriorityOf(known);
    }
    static bool IsMergeable(const pugi::xml_node& known, const pugi::xml_node& injected)
    {
        const NodeInfo* const kind = FindNodeKind(known.name());
        return kind && kind == FindNodeKind(injected.name()) && !IsStruct(known.parent()) &&
               !RulesOf(kind->type).lenient;
    }

    static void Merge(const pugi::xml_node& known, const pugi::xml_node& injected)
    {
        const bool isInjectedFirst = Wins(injected, known);
        const pugi::xml_node winner = isInjectedFirst ? injected : known;
        const pugi::xml_node loser = isInjectedFirst ? known : injected;
        pugi::xml_node merged = known.parent().insert_child_before(winner.name(), known);
        for (const pugi::xml_attribute attribute : winner.attributes())
            merged.append_copy(attribute);
        Merger(RulesOf(FindNodeKind(winner.name())->type), winner, loser).WriteTo(merged);
        Hide(known);
    }

    void AddStruct(const pugi::xml_node& injected)
    {
        const pugi::xml_node copy = m_base.append_copy(injected);
        for (const pugi::xml_node child : copy.children())
            if (const pugi::xml_node known = TakeKnown(child))
                HideKnown(Wins(child, known) ? known : child);
    }

    static void HideKnown(const pugi::xml_node& element)
    {
        const pugi::xml_node structure = element.parent();
        Hide(element);
        if (IsStruct(structure) && !structure.child("StructEntry"))
            Hide(structure);
    }

    pugi::xml_node m_base;
    std::unordered_map<std::string_view, pugi::xml_node> m_known;
};

} // namespace

void Inject(pugi::xml_node base, const pugi::xml_node& injected)
{
    Injector injector(base);
    ForEachNode(injected, [&injector](const pugi::xml_node& element) { injector.Add(element); });
}

} // namespace KxGenApi
