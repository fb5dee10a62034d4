// SPDX-License-Identifier: Apache-2.0
#include "FeatureSetting.h"

#include "FeatureAccess.h"

#include <chrono>
#include <thread>

namespace KxApps
{

namespace
{

FeatureSetting Parse(GenApi::INodeMap& map, const std::string& setting)
{
    const size_t equals = setting.find('=');
    const std::string name = setting.substr(0, equals);
    GenApi::IValue& feature = FindFeature(map, name);
    const bool isCommand = dynamic_cast<GenApi::ICommand*>(&feature) != nullptr;
    if (isCommand && equals != std::string::npos)
        throw INVALID_ARGUMENT_EXCEPTION("%s is a command, which takes no value", name.c_str());
    if (!isCommand && equals == std::string::npos)
        throw INVALID_ARGUMENT_EXCEPTION("%s needs a value: %s=...", name.c_str(), name.c_str());
    return {feature, isCommand ? "" : setting.substr(equals + 1)};
}

void Execute(GenApi::ICommand& command)
{
    constexpr auto kLongest = std::chrono::seconds(30); // commands that move something take their time
    const auto end = std::chrono::steady_clock::now() + kLongest;
    command.Execute();
    while (!command.IsDone()) {
        if (std::chrono::steady_clock::now() > end)
            throw TIMEOUT_EXCEPTION("the command isn't done after 30 s");
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

// "Name=Value: what was wrong".
[[noreturn]] void Raise(const FeatureSetting& setting, const GenICam::GenericException& error)
{
    const std::string name = setting.feature.GetNode()->GetName().c_str();
    const bool isCommand = dynamic_cast<GenApi::ICommand*>(&setting.feature) != nullptr;
    const std::string why = WhyNotWritable(*setting.feature.GetNode());
    std::string text = (isCommand ? name : name + "=" + setting.value) + ": ";
    if (!why.empty())
        throw RUNTIME_EXCEPTION("%s%s", text.c_str(), why.c_str());
    auto* const pEnumeration = dynamic_cast<GenApi::IEnumeration*>(&setting.feature);
    const bool isWrongName = pEnumeration && !pEnumeration->GetEntryByName(setting.value.c_str());
    text += isWrongName ? "there is no such entry" : error.GetDescription();
    if (pEnumeration) {
        text += "; entries: ";
        for (const std::string& entry : EntriesOf(*pEnumeration))
            text += (text.back() == ' ' ? "" : ", ") + entry;
    }
    // Not by the macro, whose text is bounded: some enumerations have many entries.
    throw GenICam::RuntimeException(text.c_str(), __FILE__, __LINE__);
}

} // namespace

std::vector<std::string> EntriesOf(GenApi::IEnumeration& enumeration)
{
    GenApi::StringList_t names;
    enumeration.GetSymbolics(names); // of the available ones
    std::vector<std::string> entries;
    for (const GenICam::gcstring& name : names)
        entries.emplace_back(name.c_str());
    return entries;
}

GenApi::IValue& FindFeature(GenApi::INodeMap& map, const std::string& name)
{
    auto* const pFeature = dynamic_cast<GenApi::IValue*>(map.GetNode(name.c_str()));
    if (!pFeature || dynamic_cast<GenApi::ICategory*>(pFeature))
        throw INVALID_ARGUMENT_EXCEPTION("the camera has no feature '%s'", name.c_str());
    return *pFeature;
}

std::vector<FeatureSetting> ParseSettings(GenApi::INodeMap& map, const std::vector<std::string>& settings)
{
    std::vector<FeatureSetting> parsed;
    parsed.reserve(settings.size());
    for (const std::string& setting : settings)
        parsed.push_back(Parse(map, setting));
    return parsed;
}

void Apply(const std::vector<FeatureSetting>& settings)
{
    for (const FeatureSetting& setting : settings) {
        try {
            if (auto* const pCommand = dynamic_cast<GenApi::ICommand*>(&setting.feature))
                Execute(*pCommand);
            else
                setting.feature.FromString(setting.value.c_str());
        } catch (const GenICam::GenericException& e) {
            Raise(setting, e);
        }
    }
}

} // namespace KxApps
