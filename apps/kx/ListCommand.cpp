// SPDX-License-Identifier: Apache-2.0
#include "Cameras.h"
#include "Commands.h"
#include "Findings.h"
#include "NodeText.h"
#include "Output.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <iostream>
#include <memory>
#include <string>

using namespace KxApi;
using Json = nlohmann::ordered_json;

namespace Kx
{

namespace
{

// Names come from cameras, which may write into them what they like.
std::string Of(const Json& json, const char* key) { return OneLine(json.at(key).get<std::string>()); }

// What went wrong, as a line of its own.
void PrintError(std::ostream& out, const Json& json, const char* indent)
{
    if (!Of(json, "error").empty())
        out << indent << "! " << Of(json, "error") << "\n";
}

void PrintDevice(std::ostream& out, const Json& device)
{
    out << "    " << Of(device, "id") << "  " << Of(device, "vendor") << " " << Of(device, "model");
    if (!Of(device, "serialNumber").empty())
        out << "  serial " << Of(device, "serialNumber");
    if (!Of(device, "userDefinedName").empty())
        out << "  \"" << Of(device, "userDefinedName") << "\"";
    out << "  [" << Of(device, "accessStatus") << "]\n";
}

void PrintSystem(std::ostream& out, const Json& system)
{
    out << Of(system, "displayName") << "  " << Of(system, "tlType") << ", GenTL "
        << Of(system, "genTLVersion") << ", by " << Of(system, "vendor") << "\n";
    PrintError(out, system, "  ");
    for (const Json& entry : system.at("interfaces")) {
        out << "  " << Of(entry, "displayName") << "  (" << Of(entry, "id") << ", " << Of(entry, "tlType")
            << ")\n";
        PrintError(out, entry, "    ");
        for (const Json& device : entry.at("devices"))
            PrintDevice(out, device);
    }
}

void Print(std::ostream& out, const Json& json)
{
    out << "Producers\n";
    for (const Json& producer : json.at("producers")) {
        out << "  " << Of(producer, "path") << "  " << Of(producer, "version") << "\n";
        PrintError(out, producer, "    ");
    }
    if (json.at("producers").empty())
        out << "  none: put *.cti files into a folder that GENICAM_GENTL64_PATH names\n";
    for (const Json& system : json.at("systems"))
        PrintSystem(out, system);
}

} // namespace

void AddListCommand(CLI::App& program)
{
    const auto json = std::make_shared<bool>(false);
    CLI::App* const command = program.add_subcommand(
        "list", "Lists producers with what keeps them from working, systems, interfaces "
                "and devices with their access status");
    command->add_flag("--json", *json, "The same as one JSON object");
    command->callback([json] {
        const Json found = JsonOf(KxApps::Cameras());
        if (*json)
            std::cout << found.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
        else
            Print(std::cout, found);
        Finish(std::cout);
    });
}

} // namespace Kx
