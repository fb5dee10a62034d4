// SPDX-License-Identifier: Apache-2.0
// Opens the description of a camera and changes a feature. Plain memory stands for the camera.
#include <GenApi/GenApi.h>

#include <cstring>
#include <iostream>

struct Memory : GenApi::IPort
{
    char bytes[4096] = {};
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void* to, int64_t at, int64_t n) override { std::memcpy(to, bytes + at, size_t(n)); }
    void Write(const void* from, int64_t at, int64_t n) override { std::memcpy(bytes + at, from, size_t(n)); }
};

int main(int argc, char** argv)
try {
    Memory camera;
    GenApi::CNodeMapRef map;
    map._LoadXMLFromFile(argc > 1 ? argv[1] : "SampleCamera.xml"); // it lies in samples/descriptions
    map._Connect(&camera);
    GenApi::CIntegerPtr width = map._GetNode("Width");
    GenApi::CIntegerPtr payload = map._GetNode("PayloadSize");
    width->SetValue(640);
    std::cout << "width " << width->GetValue() << ", bytes of an image " << payload->GetValue() << "\n";
} catch (const GenICam::GenericException& e) {
    std::cerr << e.GetDescription() << "\n";
    return 1;
}
