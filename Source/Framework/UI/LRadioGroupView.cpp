#include "Framework/UI/LRadioGroupView.h"

#include "Framework/UI/LStdCheckBox.h"
#include "Framework/UI/LStream.h"

LRadioGroupView::LRadioGroupView(LStream* stream) : LView(stream), m_message(stream->Number("message")) {}

PaneIDT LRadioGroupView::GetCurrentRadioID() const {
    for (const auto& pane : SubPanes()) {
        if (dynamic_cast<LStdCheckBox*>(pane.get()) != nullptr && pane->GetValue() != 0) {
            return pane->GetPaneID();
        }
    }
    return 0;
}

void LRadioGroupView::SetCurrentRadioID(PaneIDT id) {
    if (auto* button = FindPane<LStdCheckBox>(*this, id)) {
        button->SetValue(1);
    }
}

void LRadioGroupView::TakeChoice(LStdCheckBox& chosen) {
    for (const auto& pane : SubPanes()) {
        auto* button = dynamic_cast<LStdCheckBox*>(pane.get());
        if (button != nullptr && button != &chosen) {
            button->SetValue(0);
        }
    }
    if (m_message != 0 && m_told != chosen.GetPaneID()) {
        m_told = chosen.GetPaneID();
        BroadcastMessage(m_message, &m_told);
    }
}
