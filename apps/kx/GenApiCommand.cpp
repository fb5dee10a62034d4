// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "DescriptionCheck.h"
#include "FeatureTree.h"
#include "LoadedDescription.h"
#include "NodeTable.h"
#include "Output.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>
#include <string>

namespace Kx
{

namespace
{

struct Options
{
    std::string file;
    bool tree = false;
    bool table = false;
    bool json = false;
};

void RunGenApi(const Options& options)
{
    const LoadedDescription description(options.file);
    if (options.tree) {
        PrintHeadLine(std::cout, description);
        PrintTree(std::cout, description.Map()._GetNode("Root"));
    } else if (options.table)
        PrintTable(std::cout, description);
    else if (options.json)
        PrintJson(std::cout, description);
    else
        PrintSummary(std::cout, description, Check(description));
    Finish(std::cout);
}

} // namespace

void AddGenApiCommand(CLI::App& program)
{
    const auto options = std::make_shared<Options>();
    CLI::App* const command = program.add_subcommand(
        "genapi", "Loads a camera description over memory that reads as zero, checks it, and shows it");
    command->add_option("FILE", options->file, "Description, plain or zipped; recognised by its content")
        ->required();
    CLI::Option_group* const form =
        command->add_option_group("Form", "Without any of these: a summary of the check");
    form->add_flag("--tree", options->tree, "Feature tree with values");
    form->add_flag("--table", options->table,
                   "Every node with its properties, a line each, separated by tabulators");
    form->add_flag("--json", options->json, "Every node with its properties as JSON");
    form->require_option(0, 1);
    command->callback([options] { RunGenApi(*options); });
}

} // namespace Kx
