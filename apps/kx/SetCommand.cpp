// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "FeatureFile.h"
#include "FeatureSetting.h"
#include "OpenCamera.h"

#include <CLI/CLI.hpp>

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
    std::vector<std::string> settings;
    std::string file;
};

void RunSet(const Options& options)
{
    OpenCamera camera(options.camera, KxApi::KxDeviceAccess_Control);
    const std::vector<KxApps::FeatureSetting> settings =
        KxApps::ParseSettings(camera.Map(), options.settings);
    if (!options.file.empty())
        LoadFeatures(camera.Map(), options.file);
    KxApps::Apply(settings);
}

} // namespace

void AddSetCommand(CLI::App& program)
{
    const auto options = std::make_shared<Options>();
    CLI::App* const command = program.add_subcommand(
        "set", "Sets features, in the order given; nothing is set when a name is wrong");
    options->camera.AddTo(*command);
    command->add_option("NAME=VALUE", options->settings,
                        "Features with their new values; a command's NAME alone executes it");
    command->add_option("--load", options->file,
                        "Sets the features of a file that kx get --save wrote, first");
    command->callback([options] {
        if (options->settings.empty() && options->file.empty())
            throw CLI::RequiredError("NAME=VALUE or --load");
        RunSet(*options);
    });
}

} // namespace Kx
