// SPDX-License-Identifier: Apache-2.0

#include "FeatureList.h"

#include <algorithm>
#include <cstdlib>

namespace KxProducer
{
namespace
{

bool IsNumber(const std::string& text)
{
    return !text.empty() && (text[0] == '-' || text[0] == '.' || (text[0] >= '0' && text[0] <= '9'));
}

/// Register of a feature, without what depends on other features.
CRegister RegisterFor(const CFeature& feature)
{
    CRegister entry;
    entry.name = CFeatureList::RegisterOf(feature.name);
    entry.access = feature.access;
    entry.isSetting = feature.isStored && feature.kind != EFeature::Command;
    switch (feature.kind) {
    case EFeature::Float:
        entry.type = ERegister::Real;
        entry.size = sizeof(double);
        break;
    case EFeature::String:
        entry.type = ERegister::Text;
        entry.size = feature.length;
        break;
    default:
        entry.type = feature.isWide ? ERegister::Signed : ERegister::Unsigned;
        entry.size = feature.isWide ? 8 : 4;
    }
    if (IsNumber(feature.low) && IsNumber(feature.high)) {
        entry.min = std::strtod(feature.low.c_str(), nullptr);
        entry.max = std::strtod(feature.high.c_str(), nullptr);
    }
    for (const CEntry& choice : feature.entries)
        entry.allowed.push_back(choice.value);
    if (feature.kind == EFeature::Boolean)
        entry.allowed = {0, 1};
    return entry;
}

} // namespace

CFeature& CFeature::Range(std::string lowest, std::string highest, std::string increment)
{
    low = std::move(lowest);
    high = std::move(highest);
    step = std::move(increment);
    return *this;
}

CFeature Integer(std::string name, std::string toolTip)
{
    return {EFeature::Integer, std::move(name), std::move(toolTip)};
}
CFeature Float(std::string name, std::string toolTip)
{
    return {EFeature::Float, std::move(name), std::move(toolTip)};
}
CFeature Boolean(std::string name, std::string toolTip)
{
    return {EFeature::Boolean, std::move(name), std::move(toolTip)};
}
CFeature Enumeration(std::string name, std::string toolTip)
{
    return {EFeature::Enumeration, std::move(name), std::move(toolTip)};
}
CFeature Command(std::string name, std::string toolTip)
{
    CFeature feature(EFeature::Command, std::move(name), std::move(toolTip));
    feature.isStored = false;
    return feature;
}
CFeature String(std::string name, std::string toolTip)
{
    return {EFeature::String, std::move(name), std::move(toolTip)};
}

void CFeatureList::Category(const std::string& name, const std::string& toolTip)
{
    m_category = "Root";
    Add(CFeature(EFeature::Category, name, toolTip));
    m_category = name;
}

void CFeatureList::Add(CFeature feature)
{
    feature.category = m_category;
    m_shown.emplace_back(m_category, feature.name);
    m_features.push_back(std::move(feature));
}

void CFeatureList::Raw(const std::string& xml, const std::vector<std::string>& shown)
{
    m_raw.push_back(xml);
    for (const std::string& name : shown)
        m_shown.emplace_back(m_category, name);
}

const CFeature* CFeatureList::Find(const std::string& name) const
{
    const auto place = std::find_if(m_features.begin(), m_features.end(),
                                    [&](const CFeature& feature) { return feature.name == name; });
    return place == m_features.end() ? nullptr : &*place;
}

std::vector<std::string> CFeatureList::Shown(const std::string& category) const
{
    std::vector<std::string> names;
    for (const auto& [in, name] : m_shown) {
        if (in == category)
            names.push_back(name);
    }
    return names;
}

size_t CFeatureList::CountOf(const std::string& selector) const
{
    const CFeature* const feature = Find(selector);
    if (!feature)
        return 1;
    if (feature->kind == EFeature::Enumeration) {
        int64_t largest = 0;
        for (const CEntry& entry : feature->entries)
            largest = std::max(largest, entry.value);
        return static_cast<size_t>(largest) + 1;
    }
    // A list whose length changes has room for this many.
    constexpr size_t kLongest = 32;
    return IsNumber(feature->high) ? static_cast<size_t>(std::strtoul(feature->high.c_str(), nullptr, 10)) + 1
                                   : kLongest;
}

void CFeatureList::MakeRegisters(CRegisterMap& map) const
{
    for (const CFeature& feature : m_features) {
        if (feature.kind == EFeature::Category)
            continue;
        CRegister entry = RegisterFor(feature);
        for (const std::string& selector : feature.selectors)
            entry.count *= CountOf(selector);
        const CRegister& added = map.Add(std::move(entry));
        for (size_t i = 0; i < added.count; ++i) {
            if (feature.kind == EFeature::Float)
                map.SetReal(added.name, feature.real, i);
            else if (feature.kind == EFeature::String)
                map.SetText(added.name, feature.text, i);
            else
                map.SetInteger(added.name, feature.integer, i);
        }
    }
}

} // namespace KxProducer
