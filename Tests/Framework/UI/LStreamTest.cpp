#include "Framework/UI/LStream.h"

#include "Framework/Base/LException.h"
#include "Support/TestWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::AllOf;
using testing::HasSubstr;

/// What the exception says that building the window throws; empty when it throws none.
std::string Complaint(const std::string& panes) {
    try {
        const TestWindow test(panes);
    } catch (const LResourceException& exception) {
        return exception.what();
    }
    return "";
}

}  // namespace

TEST(LStreamTest, TextsThatAreNoLayoutNameItAndTheLine) {
    for (const char* xml : {"", "<a>", "<a></b>", "<a/><b/>", "no xml", "<a x='1' x='2'/>"}) {
        try {
            const LStream stream = LStream::Parse(xml, "layout 5");
            ADD_FAILURE() << "taken: " << xml;
        } catch (const LResourceException& exception) {
            EXPECT_THAT(exception.what(), HasSubstr("layout 5, line ")) << xml;
        }
    }
}

TEST(LStreamTest, ABadPaneIsNamedWithItsLayoutAndAttribute) {
    const std::pair<const char*, const char*> cases[] = {
        {R"(<pbut id="9" left="wide"/>)", "attribute left"},
        {R"(<pbut id="9" width="40000"/>)", "attribute width"},
        {R"(<pbut id="9" enabled="true"/>)", "attribute enabled"},
        {R"(<pbut id="9" message="1.5"/>)", "attribute message"},
        {R"(<pbut id="9" key="Ctrl+Nokey"/>)", R"(attribute key cannot be "Ctrl+Nokey")"},
        {R"(<butn id="9" arrow="north"/>)", R"(attribute arrow cannot be "north")"},
        {R"(<capt id="9" style="loud"/>)", "attribute style"},
        {R"(<capt id="9" for="88"/>)", "no pane 88"},
        {R"(<pict id="9" picture="cat"/>)", R"(attribute picture cannot be "cat")"},
        {R"(<tabg id="9" order="9 x"/>)", "attribute order"},
        {R"(<tabg id="9" order="9 88"/>)", "no pane 88"},
        {R"(<xxxx id="9"/>)", "no pane class"},
        {R"(<pbut id="9"><capt/></pbut>)", "holds no panes"},
    };
    for (const auto& [pane, named] : cases) {
        EXPECT_THAT(Complaint(pane), AllOf(HasSubstr("layout 7, pane 9 ("), HasSubstr(named))) << pane;
    }
    EXPECT_EQ(Complaint(R"(<pbut id="9" key="Ctrl+,"/><butn/><capt/><tabg order="9"/>)"), "");
}
