// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSString.h"
#include "QKFoundation/platform/values/unicode/Kernels.h"
#include "QKFoundation/platform/values/unicode/Normalization.h"
#include "QKFoundation/platform/values/unicode/Transcode.h"

#include "benchmarks/text/Register.h"
#include "benchmarks/text/Texts.h"

#include <cstring>

namespace qk::bench {
namespace {

/// The converters into memory of the caller: the best of this processor, and under its name each lesser one.
void addKernels(const std::string& name, const Text& text) {
    for (const unicode::Kernels* kernel : unicode::supportedKernels().subspan(1)) {
        add("UTF-8 to UTF-16", name, kernel->name,
            [&text, kernel, out = std::u16string(text.utf8.size(), u'\0')]() mutable {
                benchmark::DoNotOptimize(kernel->utf8ToUTF16(text.utf8.data(), text.utf8.size(), out.data()));
            });
        add("UTF-16 to UTF-8", name, kernel->name,
            [&text, kernel, out = std::string(3 * text.utf16.size(), '\0')]() mutable {
                benchmark::DoNotOptimize(kernel->utf16ToUTF8(text.utf16.data(), text.utf16.size(), out.data()));
            });
    }
}

} // namespace

void registerOurs(const std::string& name, const Text& text) {
    add("UTF-8 to UTF-16", name, "ours", [&text, out = std::u16string(text.utf8.size(), u'\0')]() mutable {
        benchmark::DoNotOptimize(unicode::utf8ToUTF16(text.utf8, out.data()));
    });
    add("UTF-16 to UTF-8", name, "ours", [&text, out = std::string(3 * text.utf16.size(), '\0')]() mutable {
        benchmark::DoNotOptimize(unicode::utf16ToUTF8(text.utf16, out.data()));
    });
    add("UTF-16 to UTF-32", name, "ours", [&text, out = std::u32string(text.utf16.size(), U'\0')]() mutable {
        benchmark::DoNotOptimize(unicode::utf16ToUTF32(text.utf16, out.data()));
    });
    add("UTF-32 to UTF-16", name, "ours", [&text, out = std::u16string(2 * text.utf32.size(), u'\0')]() mutable {
        benchmark::DoNotOptimize(unicode::utf32ToUTF16(text.utf32, out.data()));
    });
    add("NFC of composed", name, "ours", [&text] { benchmark::DoNotOptimize(unicode::isNFC(text.utf16)); });
    add("NFC of decomposed", name, "ours", [&text, out = std::u16string{}]() mutable {
        out.clear();
        unicode::appendNFC(text.decomposed, out);
        benchmark::DoNotOptimize(out);
    });
    add("string from UTF-8", name, "ours", [&text] { benchmark::DoNotOptimize(NSString::fromUTF8(text.utf8)); });
    add("UTF-8 to UTF-16", name, "memcpy", [&text, out = std::u16string(text.utf16.size(), u'\0')]() mutable {
        std::memcpy(out.data(), text.utf16.data(), text.utf16.size() * sizeof(char16_t));
    });
    addKernels(name, text);
}

} // namespace qk::bench
