// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/services/NSBundle.h"

#include <memory>

namespace qk::tests {

inline constexpr char kSamplePath[] = "/opt/example/Sample.bundle";

/// Puts a bundle with "en", "de", "zhTW" and a default table onto `machine`; "es.lproj" is a file, and the table of
/// "nl" is damaged.
inline void addSampleBundle(platform::memory::Machine& machine) {
    const NSString resources = kSamplePath + NSString("/Contents/Resources");
    const auto add = [&](const NSString& language, const NSDictionary& texts) {
        const NSString folder = resources.stringByAppendingPathComponent(language);
        machine.fileManager.addPropertyList(folder + "/Localizable.strings", texts);
    };
    add("", {{"ready", "READY"}, {"only.default", "Default"}, {"same", "same"}});
    add("en.lproj", {{"ready", "Ready"},
                     {"OK", "Okay"},
                     {"same", "Same"},
                     {"only.english", "English"},
                     {"swapped", "%2% of %1%"},
                     {"percent", "%1%%% of %2%"},
                     {"empty", "Empty"}});
    add("de.lproj",
        {{"ready", "Bereit"}, {"OK", "OK"}, {"swapped", "%1% von %2%"}, {"empty", ""}, {"own", "own"}, {"number", 7}});
    add("zhTW.lproj", {{"ready", NSString(u"\u5DF2\u6E96\u5099\u597D")}});
    machine.fileManager.addFile(resources + "/nl.lproj/Localizable.strings", NSData("\"ready\" = \"Klaar\""));
    machine.fileManager.addFile(resources + "/es.lproj");
}

inline std::shared_ptr<NSBundle> sampleBundle(platform::memory::Machine& machine) {
    addSampleBundle(machine);
    return NSBundle::bundleWithPath(kSamplePath, *machine.services());
}

} // namespace qk::tests
