#include "app/compare_commands.h"

#include <QAction>
#include <QFileInfo>
#include <memory>

#include "app/document_file_dialogs.h"
#include "app/form_compare.h"
#include "app/main_form.h"
#include "document/document_file.h"
#include "document/document_loader.h"
#include "platform/path_text.h"
#include "views/window/mdi_child.h"

namespace sonalyx {

namespace {

// How a document is named in the chooser and on Panel1: its file name, or "New Data".
QString ShortTitle(const TMDIChild& child) {
    return child.IsNewData() ? child.FileName() : QFileInfo(child.FileName()).fileName();
}

}  // namespace

CompareCommands::CompareCommands(TMainForm& form, Messenger& messenger,
                                 DocumentFileDialogs& dialogs)
    : QObject(&form), form_(form), messenger_(messenger), dialogs_(dialogs) {
    setObjectName(QStringLiteral("CompareCommands"));
    compareWith_ = Make(QStringLiteral("DisplayCompareWith"), tr("Compare With…"), false);
    compareOff_ = Make(QStringLiteral("DisplayCompareOff"), tr("Compare Off"), false);
    difference_ = Make(QStringLiteral("DisplayDifference"), tr("Difference"), true);
    afterMinusBefore_ =
        Make(QStringLiteral("DisplayAfterMinusBefore"), tr("After minus Before"), true);
    connect(compareWith_, &QAction::triggered, this, &CompareCommands::CompareWithExecute);
    connect(compareOff_, &QAction::triggered, this, &CompareCommands::CompareOffExecute);
    connect(difference_, &QAction::triggered, this, &CompareCommands::DifferenceExecute);
    connect(afterMinusBefore_, &QAction::triggered, this,
            &CompareCommands::AfterMinusBeforeExecute);
    UpdateActions();
}

QAction* CompareCommands::Make(const QString& name, const QString& caption, bool checkable) {
    auto* action = new QAction(caption, &form_);
    action->setObjectName(name);
    action->setCheckable(checkable);
    action->setEnabled(false);
    return action;
}

void CompareCommands::Watch(TMDIChild* child) {
    if (child != nullptr) {
        connect(child, &TMDIChild::ReferenceChanged, this, &CompareCommands::UpdateActions,
                Qt::UniqueConnection);
    }
}

void CompareCommands::UpdateActions() {
    TMDIChild* child = form_.ActiveDocument();
    Watch(child);
    const bool reference = child != nullptr && child->Reference() != nullptr;
    const auto mode = child != nullptr ? child->Difference() : DifferenceMode::Off;
    compareWith_->setEnabled(child != nullptr);
    compareOff_->setEnabled(reference);
    difference_->setEnabled(reference);
    difference_->setChecked(mode == DifferenceMode::FromReference);
    afterMinusBefore_->setEnabled(child != nullptr);
    afterMinusBefore_->setChecked(mode == DifferenceMode::AfterMinusBefore);
}

void CompareCommands::CompareWithExecute() {
    TMDIChild* child = form_.ActiveDocument();
    if (child == nullptr) {
        return;
    }
    QList<TMDIChild*> others;
    QStringList titles;
    QStringList paths;
    for (TMDIChild* window : form_.DocumentWindows()) {
        if (window != child) {
            others.append(window);
            titles.append(ShortTitle(*window));
            paths.append(window->FileName());
        }
    }
    TFormCompare chooser(ShortTitle(*child), titles, paths, &form_);
    if (chooser.exec() != QDialog::Accepted) {
        return;
    }
    if (chooser.OtherFileChosen()) {
        const QString path = dialogs_.chooseOpenFile();
        if (!path.isEmpty()) {
            CompareWithFile(*child, path);
        }
        return;
    }
    const int chosen = chooser.ChosenDocument();
    if (chosen < 0) {
        return;
    }
    // The window keeps its own copy: the other window may close while the comparison lasts.
    const TMDIChild* other = others.at(chosen);
    child->SetReference(std::make_shared<const MeasurementDocument>(other->Document()),
                        ShortTitle(*other));
}

bool CompareCommands::CompareWithFile(TMDIChild& child, const QString& path) {
    const auto lines = readDocumentLines(platform::pathFromUtf8(path.toStdString()));
    if (!lines) {
        messenger_.show("Can't read the file. Please close, if it's opened.", path.toStdString(),
                        MessageMode::Ok);
        return false;
    }
    auto reference = std::make_shared<MeasurementDocument>();
    if (!DocumentLoader::load(*reference, *lines, path.toStdString(), &messenger_)) {
        return false;
    }
    child.SetReference(std::move(reference), QFileInfo(path).fileName());
    return true;
}

void CompareCommands::CompareOffExecute() {
    if (TMDIChild* child = form_.ActiveDocument()) {
        child->SetReference(nullptr, QString());
    }
    UpdateActions();
}

void CompareCommands::DifferenceExecute(bool on) {
    if (TMDIChild* child = form_.ActiveDocument()) {
        child->SetDifferenceMode(on ? DifferenceMode::FromReference : DifferenceMode::Off);
    }
    UpdateActions();
}

void CompareCommands::AfterMinusBeforeExecute(bool on) {
    if (TMDIChild* child = form_.ActiveDocument()) {
        child->SetDifferenceMode(on ? DifferenceMode::AfterMinusBefore : DifferenceMode::Off);
    }
    UpdateActions();
}

}  // namespace sonalyx
