// SPDX-License-Identifier: Apache-2.0
#include "FeatureSetting.h"

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

} // namespace

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
            throw RUNTIME_EXCEPTION("%s=%s: %s", setting.feature.GetNode()->GetName().c_str(),
                                    setting.value.c_str(), e.GetDescription());
        }
    }
}

} // namespace KxApps
