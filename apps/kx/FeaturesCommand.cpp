// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "FeatureTree.h"
#include "OpenCamera.h"
#include "Output.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <map>
#include <memory>
#include <string>

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
};

void RunFeatures(const Options& options)
{
    // Only who could write is told which features can be written.
    OpenCamera camera(options.camera, OpenCamera::kControlIfFree);
    PrintTree(std::cout, camera.Map().GetNode("Root"), options.visibility);
    Finish(std::cout);
}

} // namespace

void AddFeaturesCommand(CLI::App& program)
{
    const auto options = std::make_shared<Options>();
    CLI::App* const command = program.add_subcommand(
        "features", "Shows a camera's features as a tree with their values; changes nothing");
    options->camera.AddTo(*command);
    command
        ->add_option("--visibility", options->visibility,
                     "Shows features up to this visibility; guru if not given")
        ->transform(CLI::CheckedTransformer(kVisibilities, CLI::ignore_case));
    command->callback([options] { RunFeatures(*options); });
}

} // namespace Kx
