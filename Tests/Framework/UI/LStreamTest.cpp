#include "Framework/UI/LStream.h"

#include "Framework/Base/LException.h"
#include "Support/TestWindow.h"

#include <gmock/gmock.h>

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

TEST(LStreamTest, ABadPaneIsNamedWithItsLayoutAndAttribute) {
    EXPECT_THAT(Complaint("<capt></pbut>"), HasSubstr("layout 7, line "));
    const std::pair<const char*, const char*> cases[] = {
        {R"(<pbut id="9" enabled="true"/>)", "attribute enabled"},
        {R"(<pbut id="9" key="Ctrl+Nokey"/>)", R"(attribute key cannot be "Ctrl+Nokey")"},
        {R"(<butn id="9" arrow="north"/>)", R"(attribute arrow cannot be "north")"},
        {R"(<capt id="9" for="88"/>)", "no pane 88"},
        {R"(<tabg id="9" order="9 88"/>)", "no pane 88"},
        {R"(<xxxx id="9"/>)", "no pane class"},
        {R"(<pbut id="9"><capt/></pbut>)", "holds no panes"}};
    for (const auto& [pane, named] : cases) {
        EXPECT_THAT(Complaint(pane), AllOf(HasSubstr("layout 7, pane 9 ("), HasSubstr(named))) << pane;
    }
    EXPECT_EQ(Complaint(R"(<pbut id="9" key="Ctrl+,"/><butn/><capt/><tabg order="9"/>)"), "");
}
