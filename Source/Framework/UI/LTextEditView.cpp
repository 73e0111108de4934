#include "Framework/UI/LTextEditView.h"

#include "Framework/UI/LStream.h"
#include "Framework/UI/Look.h"
#include "Framework/UI/PeerCasts.h"
#include "Framework/UI/WidgetTexts.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QValidator>

#include <algorithm>
#include <utility>

namespace {

/// Refuses what does not fit into a pane's text, as a whole: a path cut in the middle would name another file. So would
/// one behind a NUL, which ends a text for the system and can only be pasted.
class InputLimit final : public QValidator {
public:
    InputLimit(bool takesDigitsOnly, QObject* parent) : QValidator(parent), m_takesDigitsOnly(takesDigitsOnly) {}

    State validate(QString& input, int& /*position*/) const override {
        const bool fits = std::cmp_less_equal(input.toUtf8().size(), LStr255::kMaxLength) && !input.contains(u'\0');
        const auto isDigit = [](QChar character) { return character >= u'0' && character <= u'9'; };
        const bool isTaken = !m_takesDigitsOnly || std::all_of(input.cbegin(), input.cend(), isDigit);
        return fits && isTaken ? Acceptable : Invalid;
    }

private:
    bool m_takesDigitsOnly;
};

class EditWidget final : public QLineEdit {
public:
    EditWidget(LTextEditView& pane, QWidget* parent) : QLineEdit(parent), m_pane(pane) {
        setFocusPolicy(Qt::StrongFocus);
        setTextMargins(4, 0, 4, 0);
        connect(this, &QLineEdit::inputRejected, &QApplication::beep);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (IsModifier(event->key()) || !m_pane.HandleKeyPress(KeyOf(*event))) {
            QLineEdit::keyPressEvent(event);
        }
    }

    void focusInEvent(QFocusEvent* event) override {
        QLineEdit::focusInEvent(event);
        m_pane.PushColors();
    }

    void focusOutEvent(QFocusEvent* event) override {
        QLineEdit::focusOutEvent(event);
        m_pane.PushColors();
    }

    void inputMethodEvent(QInputMethodEvent* event) override {
        const bool bringsText = !event->commitString().isEmpty() || !event->preeditString().isEmpty();
        if (!bringsText || !m_pane.HandleKeyPress(EditKey::Other)) {
            QLineEdit::inputMethodEvent(event);
        }
    }

private:
    static bool IsModifier(int key) {
        return key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock;  // Shift, Control, Meta, Alt and the locks
    }

    static EditKey KeyOf(const QKeyEvent& event) {
        if (event.key() == Qt::Key_Up) {
            return EditKey::UpArrow;
        }
        return event.key() == Qt::Key_Down ? EditKey::DownArrow : EditKey::Other;
    }

    LTextEditView& m_pane;
};

QColor ToQColor(const RGBColor& color) {
    return QColor::fromRgba64(color.red, color.green, color.blue);
}

}  // namespace

LTextEditView::LTextEditView(LStream* stream)
    : LPane(stream), m_text(std::string_view(stream->Text("text"))), m_takesDigitsOnly(stream->Flag("digitsOnly")) {
    PutCursorAtEnd();
}

LTextEditView::LTextEditView(const SPaneInfo& info) : LPane(info) {}

void LTextEditView::SetDescriptor(const LStr255& text) {
    m_text = text;
    PutCursorAtEnd();
    if (auto* edit = PeerIfAny<QLineEdit>(*this)) {
        edit->setText(WidgetTexts::FromPane(m_text.View()));
    }
}

void LTextEditView::PutCursorAtEnd() {
    const auto end = static_cast<int>(WidgetTexts::FromPane(m_text.View()).size());
    m_selection = {.start = end, .end = end};
}

void LTextEditView::SetSelection(TextSelection selection) {
    const auto length = static_cast<int>(WidgetTexts::FromPane(m_text.View()).size());
    const int start = std::clamp(selection.start, 0, length);
    const int end = std::clamp(selection.end, start, length);
    m_selection = {.start = start, .end = end};
    if (auto* edit = PeerIfAny<QLineEdit>(*this)) {
        edit->setCursorPosition(end);
        edit->setSelection(start, end - start);
    }
}

void LTextEditView::SelectAll() {
    SetSelection({.start = 0, .end = static_cast<int>(LStr255::kMaxLength)});
}

TextSelection LTextEditView::GetSelection() const {
    const auto* edit = PeerIfAny<QLineEdit>(*this);
    if (edit == nullptr) {
        return m_selection;
    }
    if (!edit->hasSelectedText()) {
        return {.start = edit->cursorPosition(), .end = edit->cursorPosition()};
    }
    return {.start = edit->selectionStart(), .end = edit->selectionEnd()};
}

void LTextEditView::DeleteBackward() {
    if (auto* edit = PeerIfAny<QLineEdit>(*this)) {
        edit->backspace();
        return;
    }
    const bool isCursor = m_selection.start == m_selection.end;
    const int start = isCursor ? std::max(m_selection.start - 1, 0) : m_selection.start;
    m_text = WidgetTexts::ToPane(WidgetTexts::FromPane(m_text.View()).remove(start, m_selection.end - start));
    m_selection = {.start = start, .end = start};
    UserChangedText();
}

void LTextEditView::SetTextColors(const RGBColor& text, const RGBColor& back) {
    m_colors = {.text = text, .back = back};
    if (Peer() != nullptr) {
        PushColors();
    }
}

bool LTextEditView::HandleKeyPress(EditKey /*key*/) {
    return false;
}

std::unique_ptr<QWidget> LTextEditView::MakePeer(QWidget* parent) {
    auto edit = std::make_unique<EditWidget>(*this, parent);
    edit->setValidator(std::make_unique<InputLimit>(m_takesDigitsOnly, edit.get()).release());  // the widget's child
    QObject::connect(edit.get(), &QLineEdit::textEdited, edit.get(), [this] { TakeEditedText(); });
    return edit;
}

void LTextEditView::UpdatePeer() {
    LPane::UpdatePeer();
    PeerOf<QLineEdit>(*this).setText(WidgetTexts::FromPane(m_text.View()));
    SetSelection(m_selection);
    PushColors();
}

/// A selection is shown only where the keyboard is: several fields may have one. A field of these colours that cannot
/// be edited still shows a choice, which is to be read.
void LTextEditView::PushColors() {
    if (!m_colors) {
        return;
    }
    QPalette palette = QApplication::palette(Peer());
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::Text, ToQColor(m_colors->text));
        palette.setColor(group, QPalette::Base, ToQColor(m_colors->back));
        if (!Peer()->hasFocus()) {
            palette.setColor(group, QPalette::Highlight, Qt::transparent);
            palette.setColor(group, QPalette::HighlightedText, ToQColor(m_colors->text));
        }
    }
    const QColor quiet = ToQColor(Look::ColorOf(Look::Role::QuietText));
    palette.setColor(QPalette::Disabled, QPalette::Text, quiet);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, quiet);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, Qt::transparent);
    Peer()->setPalette(palette);
}

void LTextEditView::TakeEditedText() {
    m_text = WidgetTexts::ToPane(PeerOf<QLineEdit>(*this).text());
    UserChangedText();
}
