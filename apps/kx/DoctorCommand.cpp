// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "MachineCheck.h"
#include "Output.h"

#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <iostream>
#include <memory>

namespace Kx
{

namespace
{

struct Options
{
    bool json = false;
    std::string root = "/";
};

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

void Print(const std::vector<Finding>& findings)
{
    size_t faults = 0;
    for (const Finding& finding : findings) {
        faults += finding.isGood ? 0 : 1;
        std::cout << (finding.isGood ? "good  " : "mend  ") << finding.subject << ": " << finding.text
                  << "\n";
        if (!finding.mend.empty())
            std::cout << "        " << finding.mend << "\n";
    }
    std::cout << (faults == 0
                      ? std::string("nothing stands in the way of cameras")
                      : std::to_string(faults) + " of " + std::to_string(findings.size()) + " to be mended")
              << "\n";
}

void PrintJson(const std::vector<Finding>& findings)
{
    nlohmann::ordered_json json = nlohmann::ordered_json::array();
    for (const Finding& finding : findings)
        json.push_back({{"good", finding.isGood},
                        {"subject", finding.subject},
                        {"text", finding.text},
                        {"mend", finding.mend}});
    std::cout << json.dump(2) << "\n";
}

void RunDoctor(const Options& options)
{
    std::vector<Finding> findings = CheckProducers();
    const std::vector<Finding> machine = CheckMachine(options.root);
    findings.insert(findings.end(), machine.begin(), machine.end());
    if (options.json)
        PrintJson(findings);
    else
        Print(findings);
    Finish(std::cout);
}

} // namespace

void AddDoctorCommand(CLI::App& program)
{
    CLI::App* const pCommand = program.add_subcommand(
        "doctor", "Tells what on this machine stands in the way of real cameras, each with "
                  "a line that mends it; changes nothing");
    const auto options = std::make_shared<Options>();
    pCommand->add_flag("--json", options->json, "As JSON");
    pCommand->add_option("--root", options->root, "Looks at the system below this folder");
    pCommand->callback([options] { RunDoctor(*options); });
}

} // namespace Kx
