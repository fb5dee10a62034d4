// SPDX-License-Identifier: Apache-2.0
#include "Findings.h"

#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>

using namespace KxApi;
using Json = nlohmann::ordered_json;

namespace Kx
{

namespace
{

std::vector<Finding> CheckProducers()
{
    const KxApi::CKxApiAutoInitTerm sdk;
    std::vector<Finding> findings;
    for (const KxApi::CKxProducerInfo& info : KxApi::FindKxProducers()) {
        const std::string path = info.strPath.c_str();
        const bool isGood = info.strError.empty();
        findings.push_back(
            {isGood, "Producer",
             isGood ? path + "  " + info.strVersion.c_str() : std::string(info.strError.c_str()),
             isGood ? "" : "ldd " + path});
    }
    return findings;
}

std::string Text(const GenICam::gcstring& text) { return text.c_str(); }

Json Describe(const IKxDeviceInfo& info)
{
    return {{"id", Text(info.GetID())},
            {"vendor", Text(info.GetVendor())},
            {"model", Text(info.GetModel())},
            {"tlType", Text(info.GetTLType())},
            {"displayName", Text(info.GetDisplayName())},
            {"userDefinedName", Text(info.GetUserDefinedName())},
            {"serialNumber", Text(info.GetSerialNumber())},
            {"version", Text(info.GetVersion())},
            {"accessStatus", KxApps::AccessStatusName(info.GetAccessStatus())}};
}

Json Describe(const KxApps::Cameras::InterfaceEntry& entry)
{
    const IKxInterfaceInfo& info = *entry.pInterface->GetIKxInterfaceInfo();
    Json json = {{"id", Text(info.GetID())},
                 {"displayName", Text(info.GetDisplayName())},
                 {"tlType", Text(info.GetTLType())},
                 {"error", entry.error},
                 {"devices", Json::array()}};
    for (const IKxDeviceInfo* const pInfo : entry.devices)
        json["devices"].push_back(Describe(*pInfo));
    return json;
}

Json Describe(const KxApps::Cameras::SystemEntry& entry)
{
    const IKxSystemInfo& info = *entry.pSystem->GetIKxSystemInfo();
    Json json = {{"displayName", Text(info.GetDisplayName())},
                 {"vendor", Text(info.GetVendor())},
                 {"model", Text(info.GetModel())},
                 {"version", Text(info.GetVersion())},
                 {"tlType", Text(info.GetTLType())},
                 {"path", Text(info.GetPathName())},
                 {"genTLVersion", std::to_string(info.GetGenTLVersionMajor()) + "." +
                                      std::to_string(info.GetGenTLVersionMinor())},
                 {"error", entry.error},
                 {"interfaces", Json::array()}};
    for (const KxApps::Cameras::InterfaceEntry& child : entry.interfaces)
        json["interfaces"].push_back(Describe(child));
    return json;
}

} // namespace

std::vector<Finding> CheckAll(const std::string& root)
{
    std::vector<Finding> findings = CheckProducers();
    const std::vector<Finding> machine = CheckMachine(root);
    findings.insert(findings.end(), machine.begin(), machine.end());
    return findings;
}

Json JsonOf(const std::vector<Finding>& findings)
{
    Json json = Json::array();
    for (const Finding& finding : findings)
        json.push_back({{"good", finding.isGood},
                        {"subject", finding.subject},
                        {"text", finding.text},
                        {"mend", finding.mend}});
    return json;
}

Json JsonOf(const KxApps::Cameras& cameras)
{
    Json json = {{"producers", Json::array()}, {"systems", Json::array()}};
    for (const CKxProducerInfo& producer : cameras.Producers())
        json["producers"].push_back({{"path", Text(producer.strPath)},
                                     {"version", Text(producer.strVersion)},
                                     {"error", Text(producer.strError)}});
    for (const KxApps::Cameras::SystemEntry& entry : cameras.Systems())
        json["systems"].push_back(Describe(entry));
    return json;
}

} // namespace Kx
