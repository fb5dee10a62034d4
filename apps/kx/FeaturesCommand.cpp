// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "FeatureTree.h"
#include "NodeText.h"
#include "OpenCamera.h"
#include "Output.h"

#include <KxApi_TL/IKxPort.h>

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

void PrintMap(const std::string& title, KxApi::IKxPort& port, GenApi::EVisibility visibility)
{
    std::cout << title << "\n";
    try {
        PrintTree(std::cout, port.GetINodeMap()->GetNode("Root"), visibility);
    } catch (const GenICam::GenericException& e) {
        std::cout << "  ! " << OneLine(e.GetDescription()) << "\n"; // hides no other
    }
}

// Of everything before the cameras, for those who don't have one yet.
void RunAll(const Options& options)
{
    const KxApps::Cameras cameras;
    for (const KxApps::Cameras::SystemEntry& system : cameras.Systems()) {
        if (options.camera.module == "system") {
            PrintMap(system.pSystem->GetIKxSystemInfo()->GetDisplayName().c_str(),
                     *system.pSystem->GetIKxPort(), options.visibility);
            continue;
        }
        for (const KxApps::Cameras::InterfaceEntry& entry : system.interfaces)
            PrintMap(entry.pInterface->GetIKxInterfaceInfo()->GetID().c_str(),
                     *entry.pInterface->GetIKxPort(), options.visibility);
    }
    Finish(std::cout);
}

void RunFeatures(const Options& options)
{
    if (options.camera.camera.empty())
        return RunAll(options);
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
    command->get_option("CAMERA")->required(false);
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
