// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "Findings.h"
#include "Output.h"

#include <CLI/CLI.hpp>

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

void RunDoctor(const Options& options)
{
    const std::vector<Finding> findings = CheckAll(options.root);
    if (options.json)
        std::cout << JsonOf(findings).dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
                  << "\n";
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
