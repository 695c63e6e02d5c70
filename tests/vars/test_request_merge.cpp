#include "vars/request_merge.h"

#include "support/record_text.h"
#include "vars/write_cut.h"

namespace {

const int kListBounds[22] = {0, 0, 2048, 256, 1024, 256, 256, 0, 256, 256, 0, 0, 0, 256};  // by type; 0: never cut
const int kMapBounds[22] = {0, 0, 2048, 256, 1024, 256, 256, 8000, 256, 256, 0, 0, 8000, 256, 256};

/// Has the last request of a list, of one element, revised to var.
template <typename Revise>
void revised(Revise revise, QList<RW_VAR> &list, RW_VAR &var) {
    list.append(var);
    list.last().count = 1;
    revise(list, var);
}

struct Cutter {
    const char *name;
    void (*add)(QList<RW_VAR> &list, RW_VAR &var);
    const int *bounds;
};
const Cutter kCutters[] = {
    {"function_rw_var_add_read", function_rw_var_add_read, kListBounds},
    {"function_rw_var_add_write", function_rw_var_add_write, kListBounds},
    {"function_rw_var_revise", [](auto &list, auto &var) { revised(function_rw_var_revise, list, var); }, kListBounds},
    {"appendDriverRead", [](auto &list, auto &var) { appendDriverRead(list, var); }, kMapBounds},
    {"reviseDriverRead", [](auto &list, auto &var) { revised(reviseDriverRead, list, var); }, kMapBounds},
};

/// Address and count of each entry that comes of a request.
std::string cut(const Cutter &cutter, int type, int address, int count) {
    RW_VAR work = record(std::to_string(type) + "@" + std::to_string(address) + "+" + std::to_string(count));
    QList<RW_VAR> list;
    cutter.add(list, work);
    std::string text;
    for (const RW_VAR &var : static_cast<const QList<RW_VAR> &>(list)) {
        text.append(std::to_string(var.address)).append("+").append(std::to_string(var.count)).append(" ");
    }
    return text;
}

TEST(RequestMerge, EveryTypeIsCutExactlyAtItsBound) {
    for (const Cutter &cutter : kCutters) {
        for (int type = -1; type < 23; ++type) {
            for (const int bound : {256, 1024, 2048, 8000}) {
                SCOPED_TRACE(cutter.name + std::string(", type ") + std::to_string(type));
                const std::string below = std::to_string(bound - 2), from = std::to_string(bound) + "+";
                const bool isCut = type >= 0 && type < 22 && cutter.bounds[type] == bound;
                EXPECT_EQ(cut(cutter, type, bound - 2, 2), below + "+2 ");
                std::string parts = below;
                parts.append("+2 ").append(from).append("1 ");
                EXPECT_EQ(cut(cutter, type, bound - 2, 3), isCut ? parts : below + "+3 ");
                EXPECT_EQ(cut(cutter, type, bound, 3), from + "3 ");
            }
        }
    }
}

TEST(RequestMerge, NothingOverflows) {
    expectColumn(cases("vars/request_merge", "nothing overflows"), "entries", [](const TableRow &row) {
        QList<RW_VAR> list;
        RW_VAR work = record(row["given"]);
        function_rw_var_add_read(list, work);
        EXPECT_EQ(listText({work}), listText({list.last()})) << "the record ends as the second part";
        return listText(list);
    });
}

TEST(RequestMerge, RevisedEntryKeepsEverythingButItsCount) {
    QList<RW_VAR> list = records("1@5+5 13@255+1:1/1");
    RW_VAR work = record("13@255+2147483647:9/0");
    function_rw_var_revise(list, work);
    EXPECT_EQ(listText(list), "1@5+5 13@255+1:1/1 13@256+2147483646:9/0");
    work.count = 3;
    work.ownerId = 8;
    function_rw_var_revise(list, work);
    EXPECT_EQ(listText(list), "1@5+5 13@255+1:1/1 13@256+3:9/0");
}

}  // namespace
