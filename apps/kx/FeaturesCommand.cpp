// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "FeatureTree.h"
#include "NodeText.h"
#include "OpenCamera.h"
#include "Output.h"

#include <KxApi_TL/IKxPort.h>

#include <CLI/CLI.hpp>
#include <fnmatch.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <memory>
#include <regex>
#include <string>
#include <vector>

namespace Kx
{

namespace
{

const std::map<std::string, GenApi::EVisibility> kVisibilities = {
    {"beginner", GenApi::Beginner},
    {"expert", GenApi::Expert},
    {"guru", GenApi::Guru},
    {"invisible", GenApi::Invisible},
};

struct Options
{
    CameraOptions camera;
    GenApi::EVisibility visibility = GenApi::Guru;
    std::vector<std::string> names;
    bool isRegex = false;
    bool json = false;
};

bool Matches(const std::string& name, const std::string& pattern)
{
    return fnmatch(pattern.c_str(), name.c_str(), FNM_CASEFOLD) == 0;
}

FeatureChoice ChoiceOf(const Options& options)
{
    FeatureChoice choice{options.visibility, {}};
    if (options.names.empty())
        return choice;
    if (!options.isRegex) {
        choice.filter = [patterns = options.names](const std::string& name) {
            return std::any_of(patterns.begin(), patterns.end(),
                               [&](const std::string& pattern) { return Matches(name, pattern); });
        };
        return choice;
    }
    std::vector<std::regex> expressions;
    for (const std::string& text : options.names) {
        try {
            expressions.emplace_back(text, std::regex::icase);
        } catch (const std::regex_error& e) {
            throw INVALID_ARGUMENT_EXCEPTION("'%s' is no regular expression: %s", text.c_str(), e.what());
        }
    }
    choice.filter = [expressions](const std::string& name) {
        return std::any_of(expressions.begin(), expressions.end(),
                           [&](const std::regex& expression) { return std::regex_search(name, expression); });
    };
    return choice;
}

void PrintMap(const std::string& title, KxApi::IKxPort& port, const FeatureChoice& choice)
{
    std::cout << title << "\n";
    try {
        PrintTree(std::cout, port.GetINodeMap()->GetNode("Root"), choice);
    } catch (const GenICam::GenericException& e) {
        std::cout << "  ! " << OneLine(e.GetDescription()) << "\n"; // hides no other
    }
}

// Of everything before the cameras, for those who don't have one yet.
void RunAll(const Options& options)
{
    const KxApps::Cameras cameras;
    const FeatureChoice choice = ChoiceOf(options);
    for (const KxApps::Cameras::SystemEntry& system : cameras.Systems()) {
        if (options.camera.module == "system") {
            PrintMap(system.pSystem->GetIKxSystemInfo()->GetDisplayName().c_str(),
                     *system.pSystem->GetIKxPort(), choice);
            continue;
        }
        for (const KxApps::Cameras::InterfaceEntry& entry : system.interfaces)
            PrintMap(entry.pInterface->GetIKxInterfaceInfo()->GetID().c_str(),
                     *entry.pInterface->GetIKxPort(), choice);
    }
    Finish(std::cout);
}

void RunFeatures(const Options& options)
{
    if (options.camera.camera.empty())
        return RunAll(options);
    const FeatureChoice choice = ChoiceOf(options); // a wrong pattern is told before the camera is touched
    // Only who could write is told which features can be written.
    OpenCamera camera(options.camera, OpenCamera::kControlIfFree);
    GenApi::INode* const root = camera.Map().GetNode("Root");
    if (options.json)
        std::cout << ListFeatures(root, choice)
                         .dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
                  << "\n";
    else
        PrintTree(std::cout, root, choice);
    Finish(std::cout);
}

} // namespace

void AddFeaturesCommand(CLI::App& program)
{
    const auto options = std::make_shared<Options>();
    CLI::App* const command = program.add_subcommand(
        "features", "Shows a camera's features as a tree with their values; changes nothing");
    options->camera.AddTo(*command);
    command->get_option("CAMERA")->required(false);
    command->add_option("NAME", options->names,
                        "Only features of these names, with * and ? as in file names, in any case, such as "
                        "'Exposure*'");
    command->add_flag("--regex", options->isRegex, "NAME is a regular expression that names contain")
        ->needs("NAME");
    command
        ->add_flag("--json", options->json,
                   "A list of features with values, limits, entries and descriptions as JSON")
        ->needs("CAMERA");
    command
        ->add_option("--visibility", options->visibility,
                     "Shows features up to this visibility; guru if not given")
        ->transform(CLI::CheckedTransformer(kVisibilities, CLI::ignore_case));
    command->callback([options] {
        if (options->camera.camera.empty() && !options->camera.IsBeforeCameras())
            throw CLI::RequiredError("CAMERA");
        RunFeatures(*options);
    });
}

} // namespace Kx
