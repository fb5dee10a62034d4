// SPDX-License-Identifier: Apache-2.0
// The subcommands of kx. Each declares its options on the program and sets what is run if it is chosen;
// exceptions that the run raises are reported by main.
#pragma once

namespace CLI
{
class App;
}

namespace Kx
{

/// kx list: producers, systems, interfaces and devices.
void AddListCommand(CLI::App& program);

/// kx features CAMERA: the feature tree with its values.
void AddFeaturesCommand(CLI::App& program);

/// kx get CAMERA NAME...: values of features; saves feature files.
void AddGetCommand(CLI::App& program);

/// kx set CAMERA NAME=VALUE...: sets features and executes commands; loads feature files.
void AddSetCommand(CLI::App& program);

/// kx grab CAMERA: acquires images.
void AddGrabCommand(CLI::App& program);

/// kx convert IN OUT: writes an image file as another type or in another pixel format.
void AddConvertCommand(CLI::App& program);

/// kx description CAMERA: the XML of a camera's features.
void AddDescriptionCommand(CLI::App& program);

/// kx bundle: an archive that tells what there is and what is wrong.
void AddBundleCommand(CLI::App& program);

/// kx genapi FILE: loads, checks and shows a node-map description.
void AddGenApiCommand(CLI::App& program);

/// kx doctor: what on this machine stands in the way of real cameras.
void AddDoctorCommand(CLI::App& program);

} // namespace Kx
