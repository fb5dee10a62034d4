// SPDX-License-Identifier: Apache-2.0
#include "LoadedDescription.h"

#include <chrono>
#include <cstring>
#include <fstream>

namespace Kx
{

namespace
{

/// A file that can't be opened is left to the library, which tells why.
bool BeginsLikeZipArchive(const std::string& fileName)
{
    static constexpr char kSignature[] = {'P', 'K', 3, 4};
    std::ifstream file(fileName, std::ios::binary);
    char start[sizeof(kSignature)] = {};
    return file.read(start, sizeof(start)) && std::memcmp(start, kSignature, sizeof(start)) == 0;
}

} // namespace

LoadedDescription::LoadedDescription(const std::string& fileName)
    : m_fileName(fileName)
{
    const auto started = std::chrono::steady_clock::now();
    Load();
    m_loadMilliseconds =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started).count();

    for (GenApi::INode* const node : m_nodes)
        if (node->GetPrincipalInterfaceType() == GenApi::intfIPort)
            m_map._Connect(&m_ports.emplace_back(), node->GetName());
}

void LoadedDescription::Load()
{
    if (BeginsLikeZipArchive(m_fileName))
        m_map._LoadXMLFromZIPFile(m_fileName.c_str());
    else
        m_map._LoadXMLFromFile(m_fileName.c_str());
    m_map._GetNodes(m_nodes);
}

} // namespace Kx
