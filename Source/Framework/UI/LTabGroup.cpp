#include "Framework/UI/LTabGroup.h"

#include "Framework/Base/LException.h"
#include "Framework/UI/LStream.h"
#include "Framework/UI/LWindow.h"
#include "Framework/UI/LayoutAttributes.h"

#include <QWidget>

LTabGroup::LTabGroup(LStream* stream)
    : LView(stream), m_order(LayoutAttributes::Numbers(*stream, "order")), m_description(stream->Description()) {}

void LTabGroup::FinishCreateSelf() {
    LWindow* window = GetWindow();
    QWidget* previous = nullptr;
    for (const PaneIDT id : m_order) {
        const LPane* pane = window != nullptr ? window->FindPaneByID(id) : nullptr;
        if (pane == nullptr) {
            throw LResourceException(m_description + ": there is no pane " + std::to_string(id) + " to put in order");
        }
        if (previous != nullptr && pane->Peer() != nullptr) {
            QWidget::setTabOrder(previous, pane->Peer());
        }
        previous = pane->Peer();
    }
}
