// SPDX-License-Identifier: Apache-2.0
// "Name=Value" as programs take it on their command line.
#pragma once

#include <GenApi/GenApi.h>

#include <string>
#include <vector>

namespace KxApps
{

/// A feature and the text that it is to be set to; commands have none.
struct FeatureSetting
{
    GenApi::IValue& feature;
    std::string value;
};

/// The feature with a value, or the command. Raises InvalidArgumentException for a name that isn't one's.
GenApi::IValue& FindFeature(GenApi::INodeMap& map, const std::string& name);

/// Takes settings apart and finds their features, before anything is set. Raises InvalidArgumentException for
/// a name that the map doesn't have, a feature without a value and a command with one.
std::vector<FeatureSetting> ParseSettings(GenApi::INodeMap& map, const std::vector<std::string>& settings);

/// The names that an enumeration takes at present.
std::vector<std::string> EntriesOf(GenApi::IEnumeration& enumeration);

/// Sets the features in their order, and reads each back; executes commands and waits until they are done.
/// Raises RuntimeException that names the feature, the value and what was wrong, with the entries of an
/// enumeration.
void Apply(const std::vector<FeatureSetting>& settings);

} // namespace KxApps
