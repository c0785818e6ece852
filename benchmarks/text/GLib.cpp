// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/text/Register.h"
#include "benchmarks/text/Texts.h"

#include <glib.h>

namespace qk::bench {

void registerGLib(const std::string& name, const Text& text) {
    for (const char* const job : {"UTF-8 to UTF-16", "string from UTF-8"}) {
        add(job, name, "GLib", [&text] {
            g_free(g_utf8_to_utf16(text.utf8.data(), static_cast<glong>(text.utf8.size()), nullptr, nullptr, nullptr));
        });
    }
    const auto* const units = reinterpret_cast<const gunichar2*>(text.utf16.data());
    const auto count = static_cast<glong>(text.utf16.size());
    add("UTF-16 to UTF-8", name, "GLib",
        [units, count] { g_free(g_utf16_to_utf8(units, count, nullptr, nullptr, nullptr)); });
    add("UTF-16 to UTF-32", name, "GLib",
        [units, count] { g_free(g_utf16_to_ucs4(units, count, nullptr, nullptr, nullptr)); });
    add("UTF-32 to UTF-16", name, "GLib", [&text] {
        g_free(g_ucs4_to_utf16(reinterpret_cast<const gunichar*>(text.utf32.data()),
                               static_cast<glong>(text.utf32.size()), nullptr, nullptr, nullptr));
    });
    // Takes seconds for a long text: its time grows with the square of the length.
    if (text.utf8.size() < 100'000) {
        add("NFC of composed", name, "GLib", [&text] {
            g_free(g_utf8_normalize(text.utf8.data(), static_cast<gssize>(text.utf8.size()), G_NORMALIZE_NFC));
        });
    }
}

} // namespace qk::bench
