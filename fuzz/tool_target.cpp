// Fuzz target tool: the parsers of dravo-host but that of its options. The first character says which, the rest is the
// text.
#include "fuzz/tool_texts.h"

namespace {

struct Parser {
    char name;
    void (*read)(const QByteArray &text);
};

const Parser kParsers[] = {
    {'t', &readAsTagList},     {'c', &readAsCsv},   {'v', &readAsValues},         {'f', &readAsFaults},
    {'u', &readAsTurnarounds}, {'l', &readAsLists}, {'j', &readAsGatewayCommand},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    for (const Parser &parser : kParsers) {
        if (size > 0 && data[0] == uint8_t(parser.name)) {
            parser.read(QByteArray(reinterpret_cast<const char *>(data) + 1, int(size) - 1));
        }
    }
    return 0;
}
