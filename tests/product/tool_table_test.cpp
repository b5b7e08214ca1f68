// Tables of tools: the ways in which people and spreadsheets write them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "product/base/Failure.h"
#include "product/tool/ToolTable.h"

namespace {

using testing::HasSubstr;

// "name centre window drawing" of each tool.
std::string Show(const std::vector<product::NamedTool>& tools) {
    std::string text;
    for (const product::NamedTool& t : tools) {
        char numbers[160];
        std::snprintf(numbers, sizeof numbers, "|%g,%g|%g,%g,%g,%g|", t.centre.x, t.centre.y,
                      t.window.low.x, t.window.low.y, t.window.high.x, t.window.high.y);
        text += t.name + numbers + t.drawing + ";";
    }
    return text;
}

TEST(ToolTable, WhatIsRead) {
    const struct {
        const char* name;
        const char* text;
        const char* tools;
    } cases[] = {
        {"one line", "A,1,2,3,4,5,6", "A|1,2|3,4,5,6|;"},
        {"corners in any order", "A,1,2,5,6,3,4", "A|1,2|3,4,5,6|;"},
        {"titles", "tool,cx,cy,x1,y1,x2,y2\nA,1,2,3,4,5,6\n", "A|1,2|3,4,5,6|;"},
        {"a mark, Windows' line ends",
         "\xEF\xBB\xBF"
         "A,1,2,3,4,5,6\r\nB,1,2,3,4,5,6\r\n",
         "A|1,2|3,4,5,6|;B|1,2|3,4,5,6|;"},
        {"tabs", "A B\t1\t2\t3\t4\t5\t6", "A B|1,2|3,4,5,6|;"},
        {"semicolons, a comma in the name", "A,B;1;2;3;4;5;6;d.dxf", "A,B|1,2|3,4,5,6|d.dxf;"},
        {"quotes", "\"A, \"\"B\"\"\" , 1,2,3,4,5,6", "A, \"B\"|1,2|3,4,5,6|;"},
        {"remarks and empty lines", "# x\n\nA,1,2,3,4,5,6\n \n# y", "A|1,2|3,4,5,6|;"},
        {"numbers of C", "A,-1e1,.5,3,4,5,6", "A|-10,0.5|3,4,5,6|;"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.tools, Show(product::ReadToolTable(c.text, "t.csv"))) << c.name;
}

TEST(ToolTable, RefusalsNameTheLine) {
    const struct {
        const char* text;
        const char* message;
    } cases[] = {
        {"", "t.csv: names no tool"},
        {"tool,cx,cy\n", "t.csv: names no tool"},
        {"A,1,2,3,4,5,6\nB,1,2", "t.csv: line 2: has 3 fields where 7 are needed"},
        {"A,1,2,3,4,5,6\n,1,2,3,4,5,6", "line 2: the tool has no name"},
        {"A,1,2,3,4,5,6\nB,1,2,3,4,5,x", "line 2: 'x' is not a number"},
        {"A,1,2,3,4,5,6\nB,1,2,3,4,nan,6", "line 2: 'nan' is not a number"},
        {"A,1,2,3,4,5,6\n\nB,1,2,3,4,3,6", "line 3: the window has no area"},
        {"A,1,2,3,4,5,6\nB,\"1,2,3,4,5,6", "line 2: has 2 fields"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        try {
            product::ReadToolTable(c.text, "t.csv");
            ADD_FAILURE() << "accepted";
        } catch (const product::Failure& failure) {
            EXPECT_THAT(failure.what(), HasSubstr(c.message));
            EXPECT_EQ(product::Fault::Input, failure.Code());
        }
    }
}

}  // namespace
