#include "app/main_form.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QTimer>

#include "views/window/mdi_child.h"

// Arranging the document windows, the Edit menu's target and files dropped on the frame.

void TMainForm::WindowCascade1Execute() {
    mdiArea_->cascadeSubWindows();
}

void TMainForm::WindowTileHorizontal1Execute() {
    const auto windows = DocumentWindows();
    if (windows.isEmpty()) {
        return;
    }
    const QRect area = mdiArea_->viewport()->rect();
    const int height = area.height() / windows.size();
    int top = 0;
    // Creation order reads top to bottom, as the documents were opened.
    for (QMdiSubWindow* window : mdiArea_->subWindowList(QMdiArea::CreationOrder)) {
        if (!windows.contains(qobject_cast<TMDIChild*>(window))) {
            continue;
        }
        window->showNormal();
        window->setGeometry(0, top, area.width(), height);
        top += height;
    }
}

void TMainForm::WindowTileVertical1Execute() {
    const auto windows = DocumentWindows();
    if (windows.isEmpty()) {
        return;
    }
    const QRect area = mdiArea_->viewport()->rect();
    const int width = area.width() / windows.size();
    int left = 0;
    for (QMdiSubWindow* window : mdiArea_->subWindowList(QMdiArea::CreationOrder)) {
        if (!windows.contains(qobject_cast<TMDIChild*>(window))) {
            continue;
        }
        window->showNormal();
        window->setGeometry(left, 0, width, area.height());
        left += width;
    }
}

void TMainForm::WindowMinimizeAll1Execute() {
    for (TMDIChild* child : DocumentWindows()) {
        child->showMinimized();
    }
}

void TMainForm::WindowArrangeAll1Execute() {
    // Minimised windows line up along the bottom edge, left to right, row above row.
    const QRect area = mdiArea_->viewport()->rect();
    int left = 0;
    int bottom = area.height();
    for (QMdiSubWindow* window : mdiArea_->subWindowList(QMdiArea::CreationOrder)) {
        if (!window->isMinimized() || window->isHidden()) {
            continue;
        }
        const QSize size = window->size();
        if (left > 0 && left + size.width() > area.width()) {
            left = 0;
            bottom -= size.height();
        }
        window->move(left, bottom - size.height());
        left += size.width();
    }
}

void TMainForm::TrackEditTarget(QWidget* focused) {
    // The menu bar takes the focus while it is worked from the keyboard (Alt+E); the Edit menu
    // must still act on the editor the user came from.
    if (qobject_cast<QMenuBar*>(focused) != nullptr || qobject_cast<QMenu*>(focused) != nullptr) {
        return;
    }
    const bool editor = qobject_cast<QPlainTextEdit*>(focused) != nullptr ||
                        qobject_cast<QLineEdit*>(focused) != nullptr ||
                        qobject_cast<QTextEdit*>(focused) != nullptr;
    if (editor && focused->window() == this) {
        editTarget_ = focused;
    } else if (focused != nullptr && focused->window() == this) {
        editTarget_ = nullptr;
    }
    UpdateEditActions();
}

void TMainForm::UpdateEditActions() {
    bool undo = false;
    bool selection = false;
    bool writable = false;
    if (auto* plain = qobject_cast<QPlainTextEdit*>(editTarget_.data())) {
        undo = plain->document()->isUndoAvailable();
        selection = plain->textCursor().hasSelection();
        writable = !plain->isReadOnly();
    } else if (auto* rich = qobject_cast<QTextEdit*>(editTarget_.data())) {
        undo = rich->document()->isUndoAvailable();
        selection = rich->textCursor().hasSelection();
        writable = !rich->isReadOnly();
    } else if (auto* line = qobject_cast<QLineEdit*>(editTarget_.data())) {
        undo = line->isUndoAvailable();
        selection = line->hasSelectedText();
        writable = !line->isReadOnly();
    }
    Action(QStringLiteral("EditUndo1"))->setEnabled(undo && writable);
    Action(QStringLiteral("EditCut1"))->setEnabled(selection && writable);
    Action(QStringLiteral("EditCopy1"))->setEnabled(selection);
    Action(QStringLiteral("EditDelete1"))->setEnabled(selection && writable);
    Action(QStringLiteral("EditSelectAll1"))->setEnabled(editTarget_ != nullptr);
}

void TMainForm::RunOnEditTarget(const char* slot) {
    if (editTarget_ != nullptr) {
        QMetaObject::invokeMethod(editTarget_.data(), slot);
        UpdateEditActions();
    }
}

void TMainForm::DeleteSelection() {
    if (auto* plain = qobject_cast<QPlainTextEdit*>(editTarget_.data())) {
        plain->textCursor().removeSelectedText();
    } else if (auto* line = qobject_cast<QLineEdit*>(editTarget_.data())) {
        line->del();
    }
    UpdateEditActions();
}

bool TMainForm::DropCarriesFiles(const QEvent* event) const {
    const auto* drop = static_cast<const QDropEvent*>(event);
    const QMimeData* data = drop->mimeData();
    if (data == nullptr || !data->hasUrls()) {
        return false;
    }
    const auto urls = data->urls();
    return std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
}

void TMainForm::OpenDroppedFiles(const QEvent* event) {
    const auto* drop = static_cast<const QDropEvent*>(event);
    QStringList paths;
    for (const QUrl& url : drop->mimeData()->urls()) {
        if (url.isLocalFile()) {
            paths.append(url.toLocalFile());
        }
    }
    // Let the drop finish before any message box comes up.
    QTimer::singleShot(0, this, [this, paths] { OpenDocumentFiles(paths); });
}

bool TMainForm::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (dropRegistered_ &&
        (type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop)) {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (widget != nullptr && widget->window() == this && DropCarriesFiles(event)) {
            auto* drop = static_cast<QDropEvent*>(event);
            drop->setDropAction(Qt::CopyAction);
            drop->accept();
            if (type == QEvent::Drop) {
                OpenDroppedFiles(event);
            }
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}
