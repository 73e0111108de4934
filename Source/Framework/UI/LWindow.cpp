#include "Framework/UI/LWindow.h"

#include "Framework/Base/EmbeddedResources.h"
#include "Framework/Base/LException.h"
#include "Framework/UI/LApplication.h"
#include "Framework/UI/LControl.h"
#include "Framework/UI/LMenuBar.h"
#include "Framework/UI/LStdButton.h"
#include "Framework/UI/LStream.h"
#include "Framework/UI/PaneWidget.h"
#include "Framework/UI/TRegistrar.h"

#include <QKeyEvent>
#include <QLayout>
#include <QMainWindow>
#include <QMenuBar>
#include <QScreen>

#include <algorithm>

namespace {

/// The area of a window under its menu bar: draws the window itself and holds its panes.
class ContentWidget final : public PaneWidget {
public:
    ContentWidget(LWindow& window, QWidget* parent) : PaneWidget(window, parent), m_window(window) {}

protected:
    void resizeEvent(QResizeEvent* /*event*/) override {
        m_window.ResizeFrameTo(static_cast<std::int16_t>(width()), static_cast<std::int16_t>(height()));
    }

private:
    LWindow& m_window;
};

}  // namespace

/// The top-level widget of a window.
class WindowShell final : public QMainWindow {
public:
    explicit WindowShell(LWindow& window) : m_window(window) {}

protected:
    /// The frame's close button asks; the window decides.
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        m_window.DoClose();
    }

    void keyPressEvent(QKeyEvent* event) override {
        const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (isEnter && m_window.PressButton(m_window.m_defaultButton)) {
            return;
        }
        if (event->key() == Qt::Key_Escape && m_window.PressButton(m_window.m_cancelButton)) {
            return;
        }
        QMainWindow::keyPressEvent(event);
    }

private:
    LWindow& m_window;
};

LWindow::LWindow(LStream* stream)
    : LView(stream), m_title(stream->Text("title")), m_isResizable(stream->Flag("resizable")),
      m_menuBarID(stream->Number("menuBar")), m_defaultButton(stream->Number("defaultButton")),
      m_cancelButton(stream->Number("cancelButton")) {}

LWindow::~LWindow() = default;

LWindow* LWindow::CreateWindow(int layoutID, LCommander* super) {
    const std::string number = std::to_string(layoutID);
    const std::string_view xml = FindEmbeddedResource("Layouts/" + number + ".xml");
    if (xml.data() == nullptr) {
        throw LResourceException("layout " + number + " is missing");
    }
    LStream stream = LStream::Parse(xml, "layout " + number);
    std::unique_ptr<LPane> pane = PaneClasses::CreateWithSubPanes(stream);
    auto* window = ThrowIfNil(dynamic_cast<LWindow*>(pane.get()), "the window of layout " + number);
    static_cast<void>(pane.release());  // the same object, owned as a window from here on
    LApplication::Instance().Adopt(std::unique_ptr<LWindow>(window));
    window->SetSuperCommander(super);
    window->BuildPeer(nullptr);
    window->CentreOver(super);
    window->FinishCreate();
    return window;
}

void LWindow::CentreOver(LCommander* commander) {
    while (commander != nullptr && dynamic_cast<LWindow*>(commander) == nullptr) {
        commander = commander->GetSuperCommander();
    }
    const auto* above = dynamic_cast<LWindow*>(commander);
    if (above != nullptr && above->Shell() != nullptr && above->Shell()->isVisible()) {
        const Rect frame = CalcLocalFrameRect();
        m_shell->move(above->Shell()->geometry().center() - QPoint(frame.Width() / 2, frame.Height() / 2));
    }
}

void LWindow::BuildPeer(QWidget* /*parent*/) {
    m_shell = std::make_unique<WindowShell>(*this);
    const Rect frame = CalcLocalFrameRect();
    m_shell->setWindowTitle(QString::fromStdString(m_title));
    LView::BuildPeer(m_shell.get());
    QWidget* peer = Peer();
    peer->setMinimumSize(frame.Width(), frame.Height());
    m_shell->setCentralWidget(peer);
    if (m_menuBarID != 0) {
        LMenuBar::Install(m_menuBarID, *this, *m_shell->menuBar());
    }
    if (!m_isResizable) {
        peer->setFixedSize(frame.Width(), frame.Height());
        m_shell->layout()->setSizeConstraint(QLayout::SetFixedSize);
    }
}

std::unique_ptr<QWidget> LWindow::MakePeer(QWidget* parent) {
    return std::make_unique<ContentWidget>(*this, parent);
}

QWidget* LWindow::Shell() const {
    return m_shell.get();
}

void LWindow::Show() {
    if (m_shell != nullptr) {
        m_shell->show();
    }
}

void LWindow::Hide() {
    if (m_shell != nullptr) {
        m_shell->hide();
    }
}

void LWindow::Select() {
    if (m_shell != nullptr) {
        m_shell->raise();
        m_shell->activateWindow();
    }
}

void LWindow::SetDescriptor(const LStr255& text) {
    m_title = text.View();
    if (m_shell != nullptr) {
        m_shell->setWindowTitle(QString::fromStdString(m_title));
    }
}

LStr255 LWindow::GetDescriptor() const {
    return LStr255(std::string_view(m_title));
}

void LWindow::MoveBy(int horizontally, int vertically) {
    if (m_shell != nullptr) {
        m_shell->move(m_shell->pos() + QPoint(horizontally, vertically));
    }
}

void LWindow::ResizeWindowTo(int width, int height) {
    if (QWidget* peer = Peer()) {
        if (m_isResizable) {
            m_shell->resize(width, height + (m_menuBarID != 0 ? m_shell->menuBar()->height() : 0));
        } else {
            peer->setFixedSize(width, height);
        }
    }
    ResizeFrameTo(static_cast<std::int16_t>(width), static_cast<std::int16_t>(height));
}

void LWindow::DoClose() {
    CloseWindow();
}

void LWindow::CloseWindow() {
    Hide();
    LApplication::Instance().Dispose(*this);
}

bool LWindow::ObeyCommand(CommandT command, void* ioParam) {
    if (command == kCommandClose) {
        DoClose();
        return true;
    }
    return LCommander::ObeyCommand(command, ioParam);
}

bool LWindow::FindCommandStatus(CommandT command) {
    return command == kCommandClose || LCommander::FindCommandStatus(command);
}

bool LWindow::PressButton(PaneIDT id) {
    auto* button = id != 0 ? dynamic_cast<LStdButton*>(FindPaneByID(id)) : nullptr;
    if (button == nullptr || !button->IsEnabled() || !button->IsVisible()) {
        return false;
    }
    button->BroadcastValueMessage();
    return true;
}
