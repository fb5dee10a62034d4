// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <GenApi/GenApi.h>

#include <nlohmann/json.hpp>

#include <functional>
#include <iosfwd>
#include <string>

namespace Kx
{

/// Which features are shown: up to a visibility, of those names for which the filter is true.
struct FeatureChoice
{
    GenApi::EVisibility visibility = GenApi::Invisible;
    std::function<bool(const std::string&)> filter = {}; ///< none: all
};

/// Prints the features below Root with their values, units and access modes, indented by category.
/// Categories without a feature that is shown are left out where there is a filter.
void PrintTree(std::ostream& out, GenApi::INode* root, const FeatureChoice& choice = {});

/// The same as a list of all details of each, with its category.
nlohmann::ordered_json ListFeatures(GenApi::INode* root, const FeatureChoice& choice);

} // namespace Kx
