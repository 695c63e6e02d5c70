#include "line/read_plan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <random>
#include <sstream>

#include "korvel_dravo_elements.h"
#include "support/table.h"

using namespace dravo;

namespace {

/// "100+2 103+4*2": the unit behind the star, 1 where there is none.
QVector<WantedRange> wantedOf(const std::string &text) {
    QVector<WantedRange> wanted;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        WantedRange range = {0, 0, 1};
        EXPECT_GE(sscanf(word.c_str(), "%d+%d*%d", &range.address, &range.count, &range.unit), 2) << word;
        wanted.append(range);
    }
    return wanted;
}

std::string textOf(const QVector<ElementRange> &requests) {
    std::string text;
    for (const ElementRange &request : requests) {
        text += (text.empty() ? "" : " ") + std::to_string(request.first) + "+" + std::to_string(request.count);
    }
    return text;
}

TEST(ReadLimits, FrameLimitModbusAndTheEndOfTheAddressMap) {
    for (const TableRow &row : table(R"(
        type | frame limit | elements |   end | two elements
           0 |          32 |      256 | 64336 |            1
           1 |  2147483647 |     2000 | 65536 |            1
           2 |         251 |     2000 | 55584 |            1
           6 |           0 |        8 | 55792 |            1
           7 |          32 |       32 | 23536 |            4
           8 |         126 |      125 | 53792 |            4
           9 | -2147483648 |        1 | 54792 |            4
          10 |         125 |      125 | 56036 |            4
          13 |          32 |       32 | 28024 |            8
          13 |         125 |       62 | 28024 |            8
          19 |         124 |      124 | 52536 |            4
          12 |          32 |        1 |     0 |            4
          22 |          32 |        1 |     0 |            4)")) {
        SCOPED_TRACE(row.line());
        const ReadLimits limits = readLimits(row.number("type"), row.number("frame limit"));
        EXPECT_EQ(limits.elementsPerRead, row.number("elements"));
        EXPECT_EQ(limits.end, row.number("end"));
        EXPECT_EQ(limits.dataBytes(2), row.number("two elements"));
    }
}

TEST(ReadCost, CharactersSilencesAndTurnaround) {
    for (const TableRow &row : table(R"(
          baud | bits | request | turnaround | bytes |       us
          9600 |   12 |       8 |          0 |     4 |    30000
          9600 |   11 |       8 |          0 |     4 |    27500
         19200 |   12 |      22 |       5000 |     4 |    28750
        115200 |   11 |       8 |          0 |     4 |     5124
        100000 |   10 |       8 |        300 |   250 |    30100
             0 |   10 |       8 |         -1 |     0 | 200000000)")) {
        SCOPED_TRACE(row.line());
        const LineCost line = {row.number("baud"), row.number("bits"), row.number("request"), row.number("turnaround")};
        EXPECT_EQ(ReadCost(line).us(row.number("bytes")), row.number("us"));
    }
}

// At 9600 baud without turnaround a request costs as much as 20 bytes of data.
TEST(ReadPlan, Examples) {
    for (const TableRow &row : table(R"(
        name                            | type | limit | wanted                | walls   | requests                | left out
        nothing                         |    7 |    32 |                       |         |                         | 0
        empty and negative counts       |    7 |    32 | 5+0 5+-3 5+-1*2       |         |                         | 0
        a gap of ten registers: fewer   |    7 |    32 | 0+1 11+1              |         | 0+12                    | 0
        eleven are dearer than a read   |    7 |    32 | 0+1 12+1              |         | 0+1 12+1                | 0
        bits are cheap                  |    1 |    32 | 0+1 161+1             |         | 0+162                   | 0
        but not all                     |    1 |    32 | 0+1 176+1             |         | 0+1 176+1               | 0
        cut anywhere, earliest last     |    7 |    32 | 100+40                |         | 100+8 108+32            | 0
        nested, equal, unsorted         |    7 |    32 | 9+1 0+10 0+10 3+2     |         | 0+10                    | 0
        an odd count of a pair          |    7 |    32 | 10+3*2                |         | 10+4                    | 0
        pairs stay whole                |    7 |     3 | 0+8*2                 |         | 0+2 2+2 4+2 6+2         | 0
        odd pairs overlap               |    7 |     2 | 0+2*2 1+2*2           |         | 0+2 1+2                 | 0
        a pair holds the single         |    7 |     2 | 0+2*2 1+1             |         | 0+2                     | 0
        limit 1 cuts a pair             |    7 |     1 | 0+2*2                 |         | 0+1 1+1                 | 0
        the bound cuts                  |    8 |    32 | 250+12                |         | 250+6 256+6             | 0
        and cuts a pair                 |    7 |    32 | 7997+6*2              |         | 7997+3 8000+3           | 0
        type 13 counts double           |   13 |    62 | 0+1 6+1               |         | 0+7                     | 0
        type 13, dearer                 |   13 |    62 | 0+1 7+1               |         | 0+1 7+1                 | 0
        a wall                          |    7 |    32 | 0+4 6+2               | 2       | 0+2 2+6                 | 0
        a wall in a pair                |    7 |    32 | 0+6*2                 | 3       | 0+2 2+2 4+2             | 0
        beyond the wire                 |    7 |    32 | 23534+9 23536+1 -1+4  |         | 23534+2                 | 3
        beyond int                      |    7 |    32 | 2147483647+2147483647*2 23535+2*2 |  | 23535+1             | 2
        below int                       |    7 |    32 | -2147483648+2147483647 0+-2147483648 |  |                 | 1
        no type of the line             |   12 |    32 | 0+4                   |         |                         | 1)")) {
        SCOPED_TRACE(row.line());
        Refusals refusals;
        if (!row.empty("walls")) {
            refusals.walls << row.number("walls");
        }
        const LineCost line = {9600, 11, 8, 0};
        const WantedElements wanted(wantedOf(row["wanted"]), readLimits(row.number("type"), row.number("limit")));
        EXPECT_EQ(textOf(planReads(wanted, ReadCost(line), refusals)), row["requests"]);
        EXPECT_EQ(wanted.unreachableRanges(), row.number("left out"));
    }
}

/// A small list with everything that can matter, and the best that any set of requests can do.
struct SmallCase {
    explicit SmallCase(unsigned seed) : random(seed) {
        static const int kTypes[] = {0, 1, 2, 3, 7, 8, 10, 13};
        static const LineCost kLines[] = {
            {9600, 12, 8, 0}, {19200, 12, 8, 5000}, {100000, 10, 8, 300}, {9600, 12, 0, 0}};
        type = kTypes[below(8)];
        line = kLines[below(4)];
        bits = type < 7;
        limits = readLimits(type, 1 + below(below(2) == 0 ? 4 : 40));
        const int starts[] = {0, limits.end - 14, qMax(limits.bound, 8) - 8};
        base = starts[below(limits.bound == kNoBound ? 2 : 3)];
        const int span = below(2) == 0 ? 16 : bits ? 500 : 60;
        for (int i = below(7); i >= 0; --i) {
            const bool pair = !bits && type != 13 && below(2) == 0;
            const int address = base + below(span);
            wanted.append({address, pair ? 2 * (1 + below(2)) : 1 + below(3), pair ? 2 : 1});
        }
        for (int wall = base; wall < base + span; ++wall) {
            if (below(10) == 0) {
                refusals.walls.append(wall);
            }
        }
        listValues();
    }

    int below(int bound) { return int(random() % unsigned(bound)); }

    void listValues() {
        for (const WantedRange &range : wanted) {
            for (int first = range.address; first < range.address + range.count; first += range.unit) {
                const int end = first + range.unit;
                if (range.unit == 2 && limits.elementsPerRead > 1 && end <= limits.end && first + 1 != limits.bound) {
                    values.push_back({first, 2});
                    continue;
                }
                for (int element = first; element < qMin(end, limits.end); ++element) {
                    values.push_back({element, 1});
                }
            }
        }
    }

    bool isAllowed(const ElementRange &request) const {
        if (request.count > limits.elementsPerRead || request.first < 0 || request.end() > limits.end ||
            (request.first < limits.bound && request.end() > limits.bound)) {
            return false;
        }
        const bool onePair = std::any_of(values.begin(), values.end(), [&](const ElementRange &value) {
            return value.count == 2 && value.first == request.first && value.end() == request.end();
        });
        return onePair || std::none_of(refusals.walls.begin(), refusals.walls.end(),
                                       [&](int wall) { return wall > request.first && wall < request.end(); });
    }

    quint64 valuesIn(const ElementRange &request) const {
        quint64 held = 0;
        for (size_t i = 0; i < values.size(); ++i) {
            held |= quint64(values[i].first >= request.first && values[i].end() <= request.end()) << i;
        }
        return held;
    }

    using Cost = std::pair<qint64, int>;  // microseconds, requests

    /// Tries every request that holds the first value still missing, from where one begins to where one ends.
    Cost cheapest(quint64 missing) {
        if (missing == 0) {
            return {0, 0};
        }
        const auto known = cheapestOf.find(missing);
        if (known != cheapestOf.end()) {
            return known->second;
        }
        size_t next = 0;
        while ((missing >> next & 1) == 0) {
            ++next;
        }
        Cost best = {std::numeric_limits<qint64>::max(), 0};
        for (const ElementRange &from : values) {
            for (const ElementRange &to : values) {
                const ElementRange request = {from.first, int(to.end()) - from.first};
                const quint64 held = valuesIn(request);
                if ((held >> next & 1) != 0 && isAllowed(request)) {
                    const Cost rest = cheapest(missing & ~held);
                    best = std::min(best, {rest.first + us(request), rest.second + 1});
                }
            }
        }
        return cheapestOf[missing] = best;
    }

    qint64 us(const ElementRange &request) const {
        const int bytes = bits ? (request.count + 7) / 8 : request.count * (type == 13 ? 4 : 2);
        const qint64 character = line.bitsPerCharacter * 1000000 / line.baud;
        const qint64 silences = line.baud > 19200 ? 3500 : 7 * character;
        return (line.requestCharacters + 5 + bytes) * character + silences + line.turnaroundUs;
    }

    std::mt19937 random;
    int type;
    bool bits;
    LineCost line;
    ReadLimits limits;
    int base;
    QVector<WantedRange> wanted;
    Refusals refusals;
    std::vector<ElementRange> values;  // what must lie in one request
    std::map<quint64, Cost> cheapestOf;
};

TEST(ReadPlan, NoSetOfRequestsIsFaster) {
    for (unsigned seed = 0; seed < 6000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        SmallCase small(seed);
        const QVector<ElementRange> requests =
            planReads(WantedElements(small.wanted, small.limits), ReadCost(small.line), small.refusals);
        quint64 held = 0;
        SmallCase::Cost cost = {0, requests.size()};
        for (int i = 0; i < requests.size(); ++i) {
            ASSERT_TRUE(small.isAllowed(requests.at(i))) << textOf(requests);
            ASSERT_TRUE(i == 0 || requests.at(i).first > requests.at(i - 1).first) << textOf(requests);
            held |= small.valuesIn(requests.at(i));
            cost.first += small.us(requests.at(i));
        }
        const quint64 all = (quint64(1) << small.values.size()) - 1;
        ASSERT_EQ(held, all) << textOf(requests);
        ASSERT_EQ(cost, small.cheapest(all)) << textOf(requests);
    }
}

TEST(ReadPlan, AnySize) {
    std::mt19937 random(1);
    const LineCost line = {9600, 11, 8, 0};
    const auto requestsFor = [&](const QVector<WantedRange> &wanted, int type) {
        const ReadLimits limits = readLimits(type, 250);
        return planReads(WantedElements(wanted, limits), ReadCost(line), Refusals()).size();
    };
    QVector<WantedRange> singles;
    for (int address = 0; address < 65536; address += 1 + int(random() % 3)) {
        singles.append({address, 1, 1});
    }
    EXPECT_EQ(requestsFor(singles, 1), 33);
    QVector<WantedRange> many(1000000);
    for (WantedRange &range : many) {
        range = {int(random() % 70000), int(random() % 1048577), 1 + int(random() % 2)};
    }
    EXPECT_EQ(requestsFor(many, 10), 452);  // 56036 registers, 125 each, one shared: pairs begin everywhere
}

}  // namespace
