// SPDX-License-Identifier: Apache-2.0
// Features of a node map, told once: both the registers and the description are made from them.
#pragma once

#include "RegisterMap.h"

#include <cstdint>
#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace KxProducer
{

enum class EFeature
{
    Category,
    Integer,
    Float,
    Boolean,
    Enumeration,
    Command,
    String
};

enum class EVisibility
{
    Beginner,
    Expert,
    Guru,
    Invisible
};

struct CEntry
{
    std::string name;
    int64_t value;
    std::string toolTip;
    bool isCustom = false; // not of the naming convention
};

/// One feature. The functions set what differs from the usual and return the feature, so that one can be told
/// in one expression. Limits are numbers or names of nodes.
class CFeature
{
public:
    CFeature(EFeature ofKind, std::string named, std::string tip)
        : kind(ofKind)
        , name(std::move(named))
        , toolTip(std::move(tip))
    {}

    CFeature& Default(int64_t value) { return integer = value, *this; }
    CFeature& Default(int value) { return integer = value, *this; }
    CFeature& Default(double value) { return real = value, *this; }
    CFeature& Default(std::string value) { return text = std::move(value), *this; }
    CFeature& Default(const char* value) { return text = value, *this; }
    CFeature& Range(std::string low, std::string high, std::string step = "");
    CFeature& Entries(std::vector<CEntry> list) { return entries = std::move(list), *this; }
    /// 8 bytes with sign instead of 4 without.
    CFeature& Wide() { return isWide = true, *this; }
    CFeature& Length(size_t value) { return length = value, *this; }
    CFeature& ReadOnly() { return access = EAccess::RO, *this; }
    CFeature& WriteOnly() { return access = EAccess::WO, *this; }
    CFeature& Expert() { return visibility = EVisibility::Expert, *this; }
    CFeature& Guru() { return visibility = EVisibility::Guru, *this; }
    CFeature& Invisible() { return visibility = EVisibility::Invisible, *this; }
    CFeature& Unit(std::string value) { return unit = std::move(value), *this; }
    CFeature& As(std::string value) { return representation = std::move(value), *this; }
    /// The device changes the value by itself: it is never cached, and polled if told how often.
    CFeature& Volatile(int everyMs = 0) { return isVolatile = true, pollingMs = everyMs, *this; }
    /// One value for each value of these, the outermost first. Their values count from 0.
    CFeature& SelectedBy(std::vector<std::string> names) { return selectors = std::move(names), *this; }
    /// Formula over names of features, which stand for their registers' values.
    CFeature& AvailableIf(std::string formula) { return available = std::move(formula), *this; }
    CFeature& LockedIf(std::string formula) { return locked = std::move(formula), *this; }
    /// When one of these is written, the value is read again.
    CFeature& ChangedBy(std::vector<std::string> names) { return invalidators = std::move(names), *this; }
    CFeature& NotStored() { return isStored = false, *this; }
    CFeature& Description(std::string value) { return description = std::move(value), *this; }
    CFeature& Custom() { return isCustom = true, *this; }

    EFeature kind;
    std::string name, toolTip, description;
    std::string low, high, step, unit, representation, available, locked, text;
    std::vector<CEntry> entries;
    std::vector<std::string> selectors, invalidators;
    std::string category; // it stands in; set by the list
    int64_t integer = 0;
    double real = 0;
    size_t length = 64; // of texts
    EAccess access = EAccess::RW;
    EVisibility visibility = EVisibility::Beginner;
    int pollingMs = 0;
    bool isWide = false;
    bool isVolatile = false;
    bool isStored = true; // in files of settings and in user sets
    bool isCustom = false;
};

CFeature Integer(std::string name, std::string toolTip);
CFeature Float(std::string name, std::string toolTip);
CFeature Boolean(std::string name, std::string toolTip);
CFeature Enumeration(std::string name, std::string toolTip);
CFeature Command(std::string name, std::string toolTip);
CFeature String(std::string name, std::string toolTip);

class CFeatureList
{
public:
    /// Features that follow stand in this category.
    void Category(const std::string& name, const std::string& toolTip);
    void Add(CFeature feature);
    /// A piece of a description as it stands, and the features in it that the current category shows. $(Name)
    /// stands for the address of a register.
    void Raw(const std::string& xml, const std::vector<std::string>& shown = {});

    const std::deque<CFeature>& All() const { return m_features; }
    const CFeature* Find(const std::string& name) const;
    const std::vector<std::string>& RawPieces() const { return m_raw; }
    /// Names that a category shows, in their order.
    std::vector<std::string> Shown(const std::string& category) const;

    /// Adds the features' registers, with their first values.
    void MakeRegisters(CRegisterMap& map) const;
    /// How many values a selector has, or 1.
    size_t CountOf(const std::string& selector) const;
    static std::string RegisterOf(const std::string& feature) { return feature + "Reg"; }

private:
    std::deque<CFeature> m_features;
    std::vector<std::pair<std::string, std::string>> m_shown; // category and feature
    std::vector<std::string> m_raw;
    std::string m_category = "Root";
};

} // namespace KxProducer
