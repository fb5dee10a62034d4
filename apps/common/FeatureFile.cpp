// SPDX-License-Identifier: Apache-2.0
#include "FeatureFile.h"

#include <GenApi/Persistence.h>

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

using GenICam::gcstring_vector;

namespace Kx
{

namespace
{

// The first few tell what is wrong; the exception's text is bounded.
std::string Joined(const gcstring_vector& errors)
{
    constexpr size_t kShown = 3;
    std::string text;
    for (size_t i = 0; i < errors.size() && i < kShown; ++i)
        text += (i == 0 ? "" : "; ") + std::string(errors[i].c_str());
    if (errors.size() > kShown)
        text += "; and " + std::to_string(errors.size() - kShown) + " more";
    return text;
}

[[noreturn]] void Raise(const std::string& fileName, const std::string& cause)
{
    throw GenICam::RuntimeException((fileName + ": " + cause).c_str(), __FILE__, __LINE__);
}

} // namespace

int64_t SaveFeatures(GenApi::INodeMap& map, const std::string& fileName)
{
    GenApi::CFeatureBag bag;
    gcstring_vector errors;
    const int64_t count = bag.StoreToBag(&map, -1, nullptr, &errors);
    if (!errors.empty())
        Raise(fileName, Joined(errors));

    const std::string temporary = fileName + "." + std::to_string(getpid()) + ".tmp";
    std::ofstream file(temporary);
    file << bag;
    file.close();
    if (!file || std::rename(temporary.c_str(), fileName.c_str()) != 0) {
        const std::string cause = std::strerror(errno);
        std::remove(temporary.c_str());
        Raise(fileName, "cannot be written: " + cause);
    }
    return count;
}

void LoadFeatures(GenApi::INodeMap& map, const std::string& fileName)
{
    std::ifstream file(fileName);
    if (!file)
        Raise(fileName, std::string("cannot be read: ") + std::strerror(errno));
    GenApi::CFeatureBag bag;
    try {
        file >> bag;
    } catch (const GenICam::GenericException& e) {
        Raise(fileName, e.GetDescription());
    }
    gcstring_vector errors;
    if (!bag.LoadFromBag(&map, true, &errors) || !errors.empty())
        Raise(fileName, errors.empty() ? "the camera refused a value" : Joined(errors));
}

} // namespace Kx
