// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/text/Register.h"
#include "benchmarks/text/Texts.h"

#include <iconv.h>

#include <memory>

namespace qk::bench {
namespace {

struct Closer {
    void operator()(void* converter) const { iconv_close(converter); }
};

template <typename In>
void addConversion(const char* job, const std::string& name, const char* to, const char* from, const In& in,
                   std::size_t room) {
    const std::shared_ptr<void> converter{iconv_open(to, from), Closer{}};
    add(job, name, "iconv", [&in, converter, out = std::string(room, '\0')]() mutable {
        auto* source = const_cast<char*>(reinterpret_cast<const char*>(in.data()));
        std::size_t sourceLeft = in.size() * sizeof(in[0]);
        char* target = out.data();
        std::size_t targetLeft = out.size();
        benchmark::DoNotOptimize(iconv(converter.get(), &source, &sourceLeft, &target, &targetLeft));
    });
}

} // namespace

void registerIconv(const std::string& name, const Text& text) {
    addConversion("UTF-8 to UTF-16", name, "UTF-16LE", "UTF-8", text.utf8, 2 * text.utf8.size());
    addConversion("UTF-16 to UTF-8", name, "UTF-8", "UTF-16LE", text.utf16, 3 * text.utf16.size());
    addConversion("UTF-16 to UTF-32", name, "UTF-32LE", "UTF-16LE", text.utf16, 4 * text.utf16.size());
    addConversion("UTF-32 to UTF-16", name, "UTF-16LE", "UTF-32LE", text.utf32, 4 * text.utf32.size());
}

} // namespace qk::bench
