// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "ErrorLog.h"
#include "NodeText.h"
#include "ProgramReference.h"

#include <GenApi/GenApi.h>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>

namespace
{

using AddCommand = void (*)(CLI::App&);

constexpr AddCommand kCommands[] = {
    Kx::AddListCommand,   Kx::AddFeaturesCommand, Kx::AddGetCommand,         Kx::AddSetCommand,
    Kx::AddGrabCommand,   Kx::AddConvertCommand,  Kx::AddDescriptionCommand, Kx::AddGenApiCommand,
    Kx::AddDoctorCommand, Kx::AddBundleCommand,
};

// Exit codes, as told in the help text.
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

int Fail(const std::string& text)
{
    KxApps::LogError("kx " KX_VERSION, text);
    std::fprintf(stderr, "kx: %s\n", Kx::OneLine(text).c_str());
    return kFailed;
}

int Run(int argc, char** argv)
{
    CLI::App program("Command-line tool for cameras and their descriptions", "kx");
    program.footer("Exit code: 0 done, 1 failed (one line on standard error tells why), 2 wrong usage. "
                   "The last errors are kept in ~/.local/state/KxApi/errors.log for kx bundle, unless "
                   "KXAPI_ERROR_LOG is off");
    program.set_version_flag("--version", KX_VERSION);
    program.require_subcommand(1);
    for (const AddCommand add : kCommands)
        add(program);
    if (KxApps::AnswerReference(argc, argv, program))
        return 0;
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        return program.exit(e) == 0 ? 0 : kWrongUsage;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return Run(argc, argv);
    } catch (const GenICam::GenericException& e) {
        return Fail(e.GetDescription());
    } catch (const std::exception& e) {
        return Fail(e.what());
    }
}
