// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "Counted.h"
#include "FeatureDetails.h"
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
    bool plain = false;
    bool json = false;
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
    // Persistence keeps what can be written, which nothing can through a read-only connection; and only who
    // could write is told what keeps others from it.
    OpenCamera camera(options.camera,
                      options.file.empty() ? OpenCamera::kControlIfFree : KxApi::KxDeviceAccess_Control);
    auto all = nlohmann::ordered_json::array();
    for (const std::string& name : options.names) {
        const std::string value = Read(camera, name);
        if (options.plain) {
            std::cout << name << "=" << value << "\n";
            continue;
        }
        all.push_back(DetailsOf(*camera.Map().GetNode(name.c_str())));
        if (!options.json) {
            std::cout << name << "=" << value << "\n";
            PrintDetails(std::cout, all.back());
        }
    }
    if (options.json)
        std::cout << all.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << "\n";
    Finish(std::cout);
    if (!options.file.empty())
        std::cerr << KxApps::Counted(static_cast<uint64_t>(SaveFeatures(camera.Map(), options.file)), "value")
                  << " saved to " << options.file << "\n";
}

} // namespace

void AddGetCommand(CLI::App& program)
{
    const auto options = std::make_shared<Options>();
    CLI::App* const command =
        program.add_subcommand("get", "Prints features as Name=Value, as kx set takes them, and below each "
                                      "what it can be set to, or why it can't");
    options->camera.AddTo(*command);
    command->add_option("NAME", options->names, "Features, read in this order");
    CLI::Option* const plain =
        command->add_flag("--plain", options->plain, "Only the lines Name=Value, for scripts");
    command->add_flag("--json", options->json, "All of it as JSON")->excludes(plain);
    command->add_option("--save", options->file, "Saves all streamable features to this file");
    command->callback([options] {
        if (options->names.empty() && options->file.empty())
            throw CLI::RequiredError("NAME or --save");
        RunGet(*options);
    });
}

} // namespace Kx
