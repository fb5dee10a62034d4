// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "FeatureFile.h"
#include "FeatureSetting.h"
#include "OpenCamera.h"
#include "Output.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace Kx
{

namespace
{

struct Options
{
    CameraOptions camera;
    std::vector<std::string> names;
    std::string file;
};

std::string Read(OpenCamera& camera, const std::string& name)
{
    try {
        return KxApps::FindFeature(camera.Map(), name).ToString().c_str();
    } catch (const GenICam::GenericException& e) {
        throw RUNTIME_EXCEPTION("%s: %s", name.c_str(), e.GetDescription());
    }
}

void RunGet(const Options& options)
{
    // Persistence keeps what can be written, which nothing can through a read-only connection.
    OpenCamera camera(options.camera,
                      options.file.empty() ? KxApi::KxDeviceAccess_ReadOnly : KxApi::KxDeviceAccess_Control);
    for (const std::string& name : options.names)
        std::cout << name << "=" << Read(camera, name) << "\n";
    Finish(std::cout);
    if (!options.file.empty())
        std::cerr << SaveFeatures(camera.Map(), options.file) << " values saved to " << options.file << "\n";
}

} // namespace

void AddGetCommand(CLI::App& program)
{
    const auto options = std::make_shared<Options>();
    CLI::App* const command =
        program.add_subcommand("get", "Prints features as Name=Value, a line each, as kx set takes them");
    options->camera.AddTo(*command);
    command->add_option("NAME", options->names, "Features, read in this order");
    command->add_option("--save", options->file, "Saves all streamable features to this file");
    command->callback([options] {
        if (options->names.empty() && options->file.empty())
            throw CLI::RequiredError("NAME or --save");
        RunGet(*options);
    });
}

} // namespace Kx
