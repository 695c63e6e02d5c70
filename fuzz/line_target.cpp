// Fuzz target line: the line engine in virtual time. The first byte says which host drives it.
#include "fuzz/line_any_host.h"
#include "fuzz/promise.h"
#include "line/soak.h"

namespace {

constexpr int kMostExchanges = 400;

/// The model of the soak, whose every draw is one of the bytes: no wrong value, each write in its order, one outcome.
void runModel(const Draws &draws) {
    Soak soak(draws, 0);
    if (!soak.run(kMostExchanges).empty()) {
        broken(soak.report().c_str());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size > 0) {
        const Draws draws(QByteArray(reinterpret_cast<const char *>(data) + 1, int(size) - 1));
        data[0] % 2 == 0 ? runModel(draws) : AnyHost(draws).run();
    }
    return 0;
}
