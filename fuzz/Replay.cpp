// Runs a fuzz target over the files of its corpus, with any compiler: what once failed stays tested.

#include "Support.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <iterator>

int main(int argc, char** argv)
{
    try {
        std::vector<std::filesystem::path> files;
        for (const std::string& folder : std::vector<std::string>(argv + 1, argv + argc)) {
            for (const auto& entry : std::filesystem::directory_iterator(folder)) {
                files.push_back(entry.path());
            }
        }
        std::sort(files.begin(), files.end());
        for (const auto& path : files) {
            std::cout << path.filename().string()
                      << std::endl; // before it runs, so that the one that fails stands last
            std::ifstream file(path, std::ios::binary);
            const std::vector<char> content{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
            const std::vector<std::uint8_t> bytes(content.begin(), content.end());
            LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        }
        std::cout << files.size() << " inputs\n";
        return files.empty() ? 1 : 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
