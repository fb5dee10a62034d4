// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "Counted.h"
#include "DescriptionFile.h"
#include "OpenCamera.h"
#include "Output.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

namespace Kx
{

namespace
{

struct Options
{
    CameraOptions camera;
    std::string output;
    bool raw = false;
};

void RunDescription(const Options& options)
{
    OpenCamera camera(options.camera, OpenCamera::kControlIfFree);
    std::string name;
    const std::string content =
        options.raw ? RawDescriptionOf(camera.Port(), name) : DescriptionOf(camera.Port());
    if (options.output.empty()) {
        std::cout << content;
        return Finish(std::cout);
    }
    std::ofstream file(options.output, std::ios::binary | std::ios::trunc);
    file << content;
    file.close();
    if (!file)
        throw RUNTIME_EXCEPTION("'%s' can't be written: %s", options.output.c_str(), std::strerror(errno));
    std::cerr << KxApps::Counted(content.size(), "byte") << " saved to " << options.output
              << (name.empty() ? "" : ", which the camera calls " + name) << "\n";
}

} // namespace

void AddDescriptionCommand(CLI::App& program)
{
    const auto options = std::make_shared<Options>();
    CLI::App* const command = program.add_subcommand(
        "description",
        "Saves the XML that describes a camera's features; kx genapi shows and checks such files");
    options->camera.AddTo(*command);
    command->add_option("-o,--output", options->output, "File to write; standard output if not given");
    command->add_flag("--raw", options->raw, "As the camera gave it, zipped or not");
    command->callback([options] { RunDescription(*options); });
}

} // namespace Kx
