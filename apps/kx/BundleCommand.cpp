// SPDX-License-Identifier: Apache-2.0
#include "Cameras.h"
#include "Commands.h"
#include "DescriptionFile.h"
#include "ErrorLog.h"
#include "FeatureTree.h"
#include "Findings.h"
#include "ZipArchive.h"

#include <KxApi_TL/IKxPort.h>
#include <KxApi_TL/IKxStream.h>

#include <CLI/CLI.hpp>
#include <GenTL/GenTL.h>
#include <nlohmann/json.hpp>
#include <sys/utsname.h>

#include <cctype>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using namespace KxApi;
using Json = nlohmann::ordered_json;

namespace Kx
{

namespace
{

struct Options
{
    std::string output;
    std::vector<std::string> added;
    bool withoutCameras = false;
};

std::string TimeText(const char* format)
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[64];
    std::strftime(text, sizeof text, format, &local);
    return text;
}

std::string Dump(const Json& json) { return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n"; }

std::string FileText(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// Program and system, and what of the environment changes what they do.
Json About()
{
    static constexpr const char* kVariables[] = {"GENICAM_GENTL64_PATH",
                                                 "KXAPI_ARAVIS_CARDS",
                                                 "LANG",
                                                 "LD_LIBRARY_PATH",
                                                 "TMPDIR",
                                                 "QT_QPA_PLATFORM",
                                                 "DISPLAY",
                                                 "WAYLAND_DISPLAY"};
    utsname system{};
    uname(&system);
    Json json = {{"kx", KX_VERSION},
                 {"time", TimeText("%Y-%m-%dT%H:%M:%S%z")},
                 {"system", {system.sysname, system.release, system.version, system.machine}},
                 {"environment", Json::object()}};
    for (const char* const name : kVariables)
        if (const char* const value = std::getenv(name))
            json["environment"][name] = value;
    return json;
}

/// A name that is good in any file system.
std::string FileName(std::string text)
{
    for (char& c : text)
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '-' && c != '_' && c != '.')
            c = '_';
    return text.empty() ? "unnamed" : text;
}

/// Collects what can be had; what raises is told in errors.txt and hides nothing else.
class Collection
{
public:
    explicit Collection(ZipArchive& archive)
        : m_archive(archive)
    {}

    void AddMachine()
    {
        m_archive.Add("about.json", Dump(About()));
        m_archive.Add("os-release.txt", FileText("/etc/os-release"));
        m_archive.Add("memory.txt", FileText("/proc/meminfo"));
        m_archive.Add("processor.txt", FileText("/proc/cpuinfo"));
        Try("doctor", [&] { m_archive.Add("doctor.json", Dump(JsonOf(CheckAll("/")))); });
    }

    void AddCameras(const KxApps::Cameras& cameras, bool withDevices)
    {
        m_archive.Add("cameras.json", Dump(JsonOf(cameras)));
        for (const CKxProducerInfo& producer : cameras.Producers())
            if (!producer.strError.empty())
                Note(producer.strPath.c_str(), producer.strError.c_str());
        for (const KxApps::Cameras::SystemEntry& system : cameras.Systems()) {
            const std::string name = system.pSystem->GetIKxSystemInfo()->GetDisplayName().c_str();
            Note(name, system.error);
            AddModule(PathOf("systems/", name), *system.pSystem->GetIKxPort());
            for (const KxApps::Cameras::InterfaceEntry& entry : system.interfaces) {
                const std::string id = entry.pInterface->GetIKxInterfaceInfo()->GetID().c_str();
                Note(id, entry.error);
                AddModule(PathOf("interfaces/", id), *entry.pInterface->GetIKxPort());
            }
        }
        if (withDevices)
            for (const KxApps::Camera& camera : cameras.All())
                AddCamera(camera);
    }

    void AddFiles(const std::vector<std::string>& paths)
    {
        for (const std::string& path : paths)
            m_archive.Add(PathOf("added/", std::filesystem::path(path).filename().string()),
                          FileText(path.c_str()));
    }

    /// Those of this run, and the last ones of kx and kxviewer.
    void AddErrors()
    {
        m_archive.Add("errors.txt", m_errors);
        m_archive.Add("errors.log", KxApps::ReadErrorLog());
    }

private:
    /// No other's in the archive: names may differ only in what a file's name can't hold.
    std::string PathOf(const std::string& folder, const std::string& name)
    {
        std::string path = folder + FileName(name);
        for (int number = 2; !m_paths.insert(path).second; ++number)
            path = folder + std::to_string(number) + "_" + FileName(name);
        return path;
    }

    void AddCamera(const KxApps::Camera& camera)
    {
        const std::string id = camera.pInfo->GetID().c_str();
        std::cerr << "\r" << id.substr(0, 60) << "\033[K" << std::flush;
        const std::string folder = PathOf("cameras/", id);
        Try(id, [&] {
            const bool isFree = camera.pInfo->GetAccessStatus() == GenTL::DEVICE_ACCESS_STATUS_READWRITE;
            const KxApps::Device device =
                KxApps::Cameras::Open(camera, isFree ? KxDeviceAccess_Control : KxDeviceAccess_ReadOnly);
            AddModule(folder + "/remote", *device->GetIKxRemotePort());
            AddModule(folder + "/local", *device->GetIKxLocalPort());
            if (!isFree)
                return;
            const CKxAutoPtr<IKxStreamReleasable, IKxStream> stream(device->OpenIKxStream(0));
            AddModule(folder + "/stream", *stream->GetIKxPort());
        });
    }

    void AddModule(const std::string& path, IKxPort& port)
    {
        Try(path + ".xml", [&] { m_archive.Add(path + ".xml", DescriptionOf(port)); });
        Try(path + ".json", [&] {
            const Json features = ListFeatures(port.GetINodeMap()->GetNode("Root"), {});
            for (const Json& feature : features)
                if (feature.contains("error"))
                    Note(path + " " + feature["name"].get<std::string>(), feature["error"]);
            m_archive.Add(path + ".json", Dump(features));
        });
    }

    void Try(const std::string& what, const std::function<void()>& call)
    {
        try {
            call();
        } catch (const GenICam::GenericException& e) {
            Note(what, e.GetDescription());
        }
    }
    void Note(const std::string& what, const std::string& error)
    {
        if (!error.empty())
            m_errors += what + ": " + error + "\n";
    }

    ZipArchive& m_archive;
    std::string m_errors;
    std::set<std::string> m_paths;
};

void RunBundle(const Options& options)
{
    const std::string path =
        options.output.empty() ? TimeText("kx-bundle-%Y%m%d-%H%M%S.zip") : options.output;
    ZipArchive archive(path);
    Collection collection(archive);
    collection.AddMachine();
    collection.AddCameras(KxApps::Cameras(), !options.withoutCameras);
    collection.AddFiles(options.added);
    collection.AddErrors();
    archive.Finish();
    std::cerr << "\r\033[K";
    std::cout << path << "\n";
}

} // namespace

void AddBundleCommand(CLI::App& program)
{
    const auto options = std::make_shared<Options>();
    CLI::App* const command = program.add_subcommand(
        "bundle",
        "Collects in a zip archive what helps to find a fault: versions, system, producers and why they "
        "were refused, cameras, descriptions, feature values, errors of this run and the last ones of kx and "
        "kxviewer; "
        "changes nothing, sends nothing");
    command->add_option("-o,--output", options->output,
                        "File to write; kx-bundle- with date and time if not given");
    command->add_option("--add", options->added, "File to go in too; may be given several times")
        ->check(CLI::ExistingFile)
        ->take_all();
    command->add_flag("--without-cameras", options->withoutCameras, "Opens no camera");
    command->callback([options] { RunBundle(*options); });
}

} // namespace Kx
