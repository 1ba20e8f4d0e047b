#pragma once

#include <QImage>
#include <QStringList>
#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "document/measurement_document.h"
#include "sheets/parameter_sheet.h"
#include "sheets/sheet_comparison.h"
#include "sheets/sheet_fonts.h"

class QLabel;
class QPainter;
class QToolButton;
class SheetScrollBox;

// The Parameters tab's sheet: the document's parameters drawn as titled tables, silver on
// black, for all memories or for one, in a scroll box. It also draws the printed pages. With a
// reference document, the screen sheet marks the cells that read differently there and a line
// above it counts them; printed pages never carry the marks.
class ParametersView : public QWidget {
    Q_OBJECT

  public:
    explicit ParametersView(QWidget* parent = nullptr);

    // The document whose parameters section and file memo are drawn (not owned).
    void SetDocument(sonalyx::MeasurementDocument* document);

    // Compares the screen sheet with another document's parameters (nullptr ends it); the
    // title names that document in the count. The sheet is rebuilt. The reference's section is
    // copied, so the view never holds on to another window's document.
    void SetReference(const sonalyx::MeasurementDocument* reference, const QString& title);
    // The cells of the screen sheet that differ from the reference's (0 without one).
    int DifferingCells() const { return comparison_.DifferingCells(); }
    const sonalyx::SheetComparison& Comparison() const { return comparison_; }
    // What the reference has at a point of the screen sheet (sheet pixels) when the cell there
    // differs ("measured.csv: 80Hz"); empty elsewhere. Shown as the marked cell's tool tip.
    QString DifferenceText(const QPoint& sheetPoint) const;
    // Steps through the differing cells in drawing order (wrapping round): scrolls the cell
    // into view and shows what the reference has there. -1 before the first step.
    void NextDifference();
    void PreviousDifference();
    int CurrentDifference() const { return currentDifference_; }

    // The memory selector: 0 all memories, 1..6 one memory. The sheet is rebuilt.
    void SetMemory(int memory);
    int Memory() const { return memory_; }
    // The selector's entries: item 0 all memories, item k memory k.
    static QStringList MemoryItems();

    // Builds the screen sheet of the current memory and shows it. The picture stays hidden
    // while it is drawn, and when the section has nothing to draw (false).
    bool BuildParameterSheet();
    const sonalyx::SheetPicture& Sheet() const { return sheet_; }

    // Page `page` of `pageCount` (2 or 3) of an all-memory print, or the single page of a
    // one-memory print (page and count are not used then): black on white, 1310 pixels tall.
    // False when the section has nothing to draw.
    bool ParameterPage(int page, int pageCount, sonalyx::SheetPicture& out) const;
    QImage BuildParameterPage(int page, int pageCount) const;
    // Paints the page in sheet pixels; scale the painter to the paper first.
    bool PaintParameterPage(QPainter& painter, int page, int pageCount) const;
    // Whether the section has standing wave data (an all-memory print needs its pages then).
    bool HasStandingWave() const;

    const sonalyx::SheetFonts& Fonts() const { return fonts_; }
    SheetScrollBox* ScrollBox3() const { return scrollBox_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // Builds the reference's sheet like this one and compares; false without a reference sheet.
    bool CompareWithReference();
    void ShowComparison(bool referenceSheet);
    QString TablesWithDifferences() const;
    void StepDifference(int step);
    // Where a cell of the screen sheet is drawn, in sheet pixels.
    QRect CellRect(const sonalyx::SheetOp& op) const;

    sonalyx::MeasurementDocument* document_ = nullptr;
    std::optional<std::vector<std::string>> referenceLines_;
    QString referenceTitle_;
    sonalyx::SheetComparison comparison_;
    int currentDifference_ = -1;
    sonalyx::SheetFonts fonts_;
    sonalyx::SheetPicture sheet_;
    int memory_ = 0;
    SheetScrollBox* scrollBox_ = nullptr;
    QWidget* panel_ = nullptr;
    QLabel* picture_ = nullptr;
    QWidget* panelComparison_ = nullptr;
    QLabel* labelComparison_ = nullptr;
    QToolButton* btnPrevDifference_ = nullptr;
    QToolButton* btnNextDifference_ = nullptr;
};
