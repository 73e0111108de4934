#include "Framework/UI/TRegistrar.h"

#include "Framework/Base/LException.h"
#include "Framework/UI/LBorderAttachment.h"
#include "Framework/UI/LButton.h"
#include "Framework/UI/LCaption.h"
#include "Framework/UI/LEditField.h"
#include "Framework/UI/LGroupBox.h"
#include "Framework/UI/LListBox.h"
#include "Framework/UI/LPicture.h"
#include "Framework/UI/LProgressBar.h"
#include "Framework/UI/LRadioGroupView.h"
#include "Framework/UI/LStdButton.h"
#include "Framework/UI/LStdCheckBox.h"
#include "Framework/UI/LStdPopupMenu.h"
#include "Framework/UI/LStream.h"
#include "Framework/UI/LTabGroup.h"
#include "Framework/UI/LWindow.h"

#include <map>

namespace {

std::map<std::string, PaneClasses::Creator>& Creators() {
    static std::map<std::string, PaneClasses::Creator> creators;
    return creators;
}

}  // namespace

void PaneClasses::Register(const std::string& classID, Creator creator) {
    Creators()[classID] = creator;
}

std::unique_ptr<LPane> PaneClasses::Create(LStream& stream) {
    const auto found = Creators().find(stream.ClassID());
    if (found == Creators().end()) {
        throw LResourceException(stream.Description() + ": there is no pane class of this id");
    }
    return found->second(&stream);
}

std::unique_ptr<LPane> PaneClasses::CreateWithSubPanes(LStream& stream) {
    std::unique_ptr<LPane> pane = Create(stream);
    auto* view = dynamic_cast<LView*>(pane.get());
    for (LStream inside : stream.SubPanes()) {
        if (view == nullptr) {
            throw LResourceException(stream.Description() + ": a pane of this class holds no panes");
        }
        view->AddSubPane(CreateWithSubPanes(inside));
    }
    return pane;
}

void PaneClasses::RegisterFrameworkClasses() {
    TRegistrar<LWindow>::Register("wind");
    TRegistrar<LGroupBox>::Register("gbox");
    TRegistrar<LCaption>::Register("capt");
    TRegistrar<LEditField>::Register("edit");
    TRegistrar<LStdButton>::Register("pbut");
    TRegistrar<LButton>::Register("butn");
    TRegistrar<LPicture>::Register("pict");
    TRegistrar<LView>::Register("view");
    TRegistrar<LStdPopupMenu>::Register("popm");
    TRegistrar<LStdCheckBox>::Register("cbox");
    TRegistrar<LRadioGroupView>::Register("rgpv");
    TRegistrar<LTabGroup>::Register("tabg");
    TRegistrar<LListBox>::Register("lbox");
    TRegistrar<LProgressBar>::Register("prog");
    TRegistrar<LBorderAttachment>::Register("brda");
}
