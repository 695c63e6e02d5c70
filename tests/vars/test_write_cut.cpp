#include "vars/write_cut.h"

#include "support/record_text.h"

namespace {

TEST(WriteCut, ListFunctionCutsDataWithTheRequest) {
    expectColumn(cases("vars/write_cut", "list function cuts data with the request"), "entries",
                 [](const TableRow &row) {
                     QList<RW_VAR> list;
                     RW_VAR work = record(row["given"]);
                     function_rw_var_add_write(list, work);
                     EXPECT_EQ(listText({work}), listText({list.last()})) << "the record ends as the second part";
                     return listText(list);
                 });
}

TEST(WriteCut, DriverCutsAtEveryBoundOfTheAddressMap) {
    expectColumn(cases("vars/write_cut", "driver cuts at every bound of the address map"), "entries",
                 [](const TableRow &row) {
                     QList<RW_VAR> list;
                     appendDriverWrite(list, record(row["given"]));
                     return listText(list);
                 });
}

}  // namespace
