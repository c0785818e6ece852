// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/text/Register.h"
#include "benchmarks/text/Texts.h"

#include <QList>
#include <QString>

namespace qk::bench {

void registerQt(const std::string& name, const Text& text) {
    const QString string = QString::fromStdU16String(text.utf16);
    const auto length = static_cast<qsizetype>(text.utf8.size());
    add("UTF-8 to UTF-16", name, "Qt",
        [&text, length] { benchmark::DoNotOptimize(QString::fromUtf8(text.utf8.data(), length)); });
    add("string from UTF-8", name, "Qt",
        [&text, length] { benchmark::DoNotOptimize(QString::fromUtf8(text.utf8.data(), length)); });
    add("UTF-16 to UTF-8", name, "Qt", [string] { benchmark::DoNotOptimize(string.toUtf8()); });
    add("UTF-16 to UTF-32", name, "Qt", [string] { benchmark::DoNotOptimize(string.toUcs4()); });
    add("UTF-32 to UTF-16", name, "Qt", [&text] {
        benchmark::DoNotOptimize(QString::fromUcs4(text.utf32.data(), static_cast<qsizetype>(text.utf32.size())));
    });
    add("NFC of composed", name, "Qt",
        [string] { benchmark::DoNotOptimize(string.normalized(QString::NormalizationForm_C)); });
    // Takes seconds for a long text: its time grows with the square of the length.
    if (text.utf8.size() < 100'000) {
        add("NFC of decomposed", name, "Qt", [parts = QString::fromStdU16String(text.decomposed)] {
            benchmark::DoNotOptimize(parts.normalized(QString::NormalizationForm_C));
        });
    }
}

} // namespace qk::bench
