// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "CommandLine.h"
#include "Failure.h"
#include "Output.h"

#include <MWCore/mfs_utility.h>

#include <clocale>
#include <cstdio>
#include <new>
#include <string_view>

#include <QLoggingCategory>

#include <langinfo.h>

namespace MWCore::mwfile {
namespace {

Status statusOf(int count, char **arguments) {
    CommandLine line;
    try {
        line.parse(count, arguments);
    } catch (const CLI::ParseError &error) {
        const Status status = line.explain(error);
        finishOutput();
        return status;
    }
    try {
        const bool allDone = line.run();
        finishOutput();
        return allDone ? kDone : kFailed;
    } catch (const UsageFailure &failure) {
        printError(failure.what());
        return kWrongUsage;
    } catch (const Failure &failure) {
        printError(failure.what());
        return kFailed;
    }
}

/// Dates are in the user's language if its locale uses UTF-8. Names are always read as UTF-8 or
/// bytes.
void useLocale() {
    std::setlocale(LC_ALL, "");
    if (std::string_view(nl_langinfo(CODESET)) != "UTF-8")
        std::setlocale(LC_TIME, "C");
    std::setlocale(LC_CTYPE, "C.UTF-8");
}

} // namespace
} // namespace MWCore::mwfile

int main(int count, char **arguments) {
    using namespace MWCore::mwfile;
    useLocale();
    mfs_set_trace_stream(nullptr);
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    try {
        return statusOf(count, arguments);
    } catch (const std::bad_alloc &) {
        std::fputs("mwfile: out of memory\n", stderr);
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "mwfile: %s\n", failure.what());
    }
    return kFailed;
}
