#include "endurance/holdings.h"

#include <cstdio>

#include "support/private_bytes.h"
#include "support/wait_until.h"

namespace tavrin::test {
namespace {

Holdings ReadHoldings(const AppWindow& app) {
    const HANDLE process = app.process().handle();
    return {ResourcesOf(process), PrivateBytes(process)};
}

void Print(const Holdings& holdings) {
    const ProcessResources& resources = holdings.resources;
    std::printf("GDI objects %u, user objects %u, kernel handles %u, %zu KiB\n",
                resources.gdiObjects, resources.userObjects, resources.kernelHandles,
                holdings.privateBytes / 1024);
    std::fflush(stdout);
}

}  // namespace

Holdings HoldingsOf(const AppWindow& app) {
    const Holdings holdings = ReadHoldings(app);
    Print(holdings);
    return holdings;
}

testing::AssertionResult HoldsNoMoreThan(const AppWindow& app, const Holdings& before,
                                         const ProcessResources& firstUse) {
    const ProcessResources& was = before.resources;
    Holdings now;
    const bool holdsNoMore = WaitUntil([&] {
        now = ReadHoldings(app);
        const ProcessResources& is = now.resources;
        return is.gdiObjects <= was.gdiObjects + firstUse.gdiObjects &&
               is.userObjects <= was.userObjects + firstUse.userObjects &&
               is.kernelHandles <= was.kernelHandles + firstUse.kernelHandles;
    });
    Print(now);
    return holdsNoMore ? testing::AssertionSuccess()
                       : testing::AssertionFailure() << "the program holds more than before";
}

}  // namespace tavrin::test
