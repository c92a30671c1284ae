// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Measures a folder, then measures it many times more and cancels each time at a different moment.
// A part is the time from the cancelling call to the return of the measurement.
#include "benchmarks/size/measure.h"
#include "benchmarks/support/contender.h"

#include <chrono>
#include <future>
#include <thread>
#include <utility>

namespace {

using contender::Clock;

void cancelAfter(Clock::duration moment, const char *path) {
    const MWCore::MXFileSystemObject::Ptr folder = folderAt(path);
    auto measuring = std::async(std::launch::async, [&folder] {
        const auto measured = measure(folder);
        return std::pair(measured && measured->isPartial, Clock::now());
    });
    std::this_thread::sleep_for(moment);
    const Clock::time_point called = Clock::now();
    folder->cancelFolderSizeCalulation();
    const auto [wasCancelled, returned] = measuring.get();
    if (wasCancelled) // otherwise it had already ended
        contender::parts.push_back({"until it returned", returned - called});
}

} // namespace

int main(int argumentCount, char **arguments) {
    constexpr int kAttempts = 100;
    Clock::duration whole{};
    const int status = contender::run(argumentCount, arguments, [&whole](const char *path) -> long {
        (void)measure(folderAt(path)); // warms up
        const Clock::time_point start = Clock::now();
        const auto measured = measure(folderAt(path));
        whole = Clock::now() - start;
        return measured ? static_cast<long>(measured->record.containedItemCount) : -1;
    });
    for (int attempt = 1; status == 0 && attempt <= kAttempts; ++attempt)
        cancelAfter(whole * attempt / (kAttempts + 1), arguments[1]);
    contender::printParts();
    return status;
}
