// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/translation/Register.h"

#include <libintl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace qk::bench {
namespace {

constexpr const char* kDomain = "bench";

/// Compiles the texts into DIR/de/LC_MESSAGES/bench.mo, and returns DIR.
std::filesystem::path compiledCatalogue(const Catalogue& catalogue) {
    std::string name = (std::filesystem::temp_directory_path() / "qk-gettext-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("mkdtemp " + name);
    }
    const std::filesystem::path folder = std::filesystem::path(name) / "de/LC_MESSAGES";
    std::filesystem::create_directories(folder);
    std::ofstream source(folder / "bench.po");
    source << "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n\n";
    for (std::size_t index = 0; index < catalogue.keys.size(); ++index) {
        source << "msgid \"" << catalogue.keys[index] << "\"\nmsgstr \"" << catalogue.texts[index] << "\"\n\n";
    }
    source.close();
    const std::string command = "cd '" + folder.string() + "' && " QK_MSGFMT " -o bench.mo bench.po";
    if (std::system(command.c_str()) != 0) { // NOLINT(concurrency-mt-unsafe)
        throw std::runtime_error("msgfmt failed");
    }
    return name;
}

} // namespace

void registerGettext(const Catalogue& catalogue) {
    const std::filesystem::path folder = compiledCatalogue(catalogue);
    setenv("LANGUAGE", "de", 1);
    setlocale(LC_ALL, "C.UTF-8"); // any but "C" lets the variable count
    bindtextdomain(kDomain, folder.c_str());
    bind_textdomain_codeset(kDomain, "UTF-8");
    for (std::size_t index = 0; index < catalogue.keys.size(); ++index) {
        if (catalogue.texts[index] != dgettext(kDomain, catalogue.keys[index].c_str())) {
            throw std::runtime_error("gettext does not find " + catalogue.keys[index]);
        }
    }
    std::filesystem::remove_all(folder); // it is in memory by now
    const auto lookUp = [](const std::string& key) { return dgettext(kDomain, key.c_str()); };
    add("hit", "dgettext", catalogue.keys, lookUp);
    add("miss", "dgettext", catalogue.missing, lookUp);
}

} // namespace qk::bench
