#include "Framework/UI/LView.h"

LView::~LView() = default;

LPane& LView::AddSubPane(std::unique_ptr<LPane> pane) {
    pane->SetSuperView(this);
    LPane& added = *m_subPanes.emplace_back(std::move(pane));
    if (Peer() != nullptr) {
        added.BuildPeer(Peer());
    }
    return added;
}

LPane* LView::FindPaneByID(PaneIDT id) {
    if (LPane* self = LPane::FindPaneByID(id)) {
        return self;
    }
    for (const auto& pane : m_subPanes) {
        if (LPane* found = pane->FindPaneByID(id)) {
            return found;
        }
    }
    return nullptr;
}

void LView::FinishCreate() {
    for (const auto& pane : m_subPanes) {
        pane->FinishCreate();
    }
    LPane::FinishCreate();
}

void LView::BuildPeer(QWidget* parent) {
    LPane::BuildPeer(parent);
    for (const auto& pane : m_subPanes) {
        pane->BuildPeer(Peer());
    }
}

void LView::SetDescriptorForPaneID(PaneIDT id, const LStr255& text) {
    if (LPane* pane = FindPaneByID(id)) {
        pane->SetDescriptor(text);
    }
}

LStr255 LView::GetDescriptorForPaneID(PaneIDT id) {
    const LPane* pane = FindPaneByID(id);
    return pane != nullptr ? pane->GetDescriptor() : LStr255();
}

void LView::FrameChanged() {
    const Rect frame = CalcLocalFrameRect();
    const int widthChange = frame.Width() - m_laidOutWidth;
    const int heightChange = frame.Height() - m_laidOutHeight;
    if (widthChange == 0 && heightChange == 0) {
        return;
    }
    m_laidOutWidth = frame.Width();
    m_laidOutHeight = frame.Height();
    for (const auto& pane : m_subPanes) {
        pane->FollowSuperView(widthChange, heightChange);
    }
}
