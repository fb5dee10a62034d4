// SPDX-License-Identifier: Apache-2.0
#include "LoadedDescription.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <fstream>
#include <stdexcept>

namespace Kx
{

namespace
{

bool BeginsLikeZipArchive(const std::string& fileName)
{
    static constexpr char kSignature[] = {'P', 'K', 3, 4};
    std::ifstream file(fileName, std::ios::binary);
    char start[sizeof(kSignature)] = {};
    if (!file)
        throw std::runtime_error(std::strerror(errno));
    return file.read(start, sizeof(start)) && std::memcmp(start, kSignature, sizeof(start)) == 0;
}

} // namespace

LoadedDescription::LoadedDescription(const std::string& fileName)
    : m_fileName(fileName)
{
    const auto started = std::chrono::steady_clock::now();
    try {
        Load();
    }
    // The file is named by the one who knows it; the exceptions speak of what is in it.
    catch (const GenICam::GenericException& e)
    {
        throw std::runtime_error(fileName + ": " + e.GetDescription());
    } catch (const std::runtime_error& e) {
        throw std::runtime_error(fileName + ": " + e.what());
    }
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
