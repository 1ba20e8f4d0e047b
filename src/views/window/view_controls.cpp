#include "views/window/view_controls.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QEvent>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "views/compare/reference_note.h"
#include "views/window/panel_button.h"
#include "views/window/step_button.h"
#include "views/window/view_axis.h"

namespace sonalyx {

namespace {

constexpr int kPanelWidth = 200;
constexpr int kTrackHeight = 118;

// A dark instrument panel that sits well beside the black chart walls.
const char* const kPanelStyle = R"(
#Panel1 { background: #202329; border-left: 1px solid #0c0d10; }
#Panel1Scroll, #Panel1Content { background: #202329; }
#Panel1 QScrollBar:vertical { background: #202329; width: 8px; }
#Panel1 QScrollBar::handle:vertical { background: #4b525e; border-radius: 3px; min-height: 20px; }
#Panel1 QScrollBar::add-line:vertical, #Panel1 QScrollBar::sub-line:vertical { height: 0; }
#Panel1 QLabel { color: #c9ced6; }
#Panel1 QGroupBox { color: #8d96a3; border: 1px solid #353a43; border-radius: 4px;
                    margin-top: 14px; padding: 4px 4px 4px 4px; font-size: 8pt; }
#Panel1 QGroupBox::title { subcontrol-origin: margin; left: 8px; padding: 0 3px; }
#Panel1 QLabel[role="letter"] { color: #8d96a3; font-weight: bold; }
#Panel1 QLabel[role="value"] { background: #4a4f57; color: #f0f2f5; border-radius: 2px;
                               font-size: 8pt; }
#Panel1 sonalyx--PanelButton { background: #343944; color: #dfe3e8; border: 1px solid #4b525e;
                               border-radius: 3px; padding: 2px 6px; }
#Panel1 sonalyx--PanelButton[down="true"] { background: #1f6fb2; color: white;
                                           border: 1px solid #124a78; }
#Panel1 sonalyx--PanelButton:disabled { background: #2a2e35; color: #6b717b;
                                       border: 1px solid #353a43; }
#Panel1 QToolButton { background: #343944; border: 1px solid #4b525e; border-radius: 2px; }
#Panel1 QToolButton:pressed { background: #1f6fb2; }
#Panel1 QToolButton:disabled { background: #2a2e35; border-color: #353a43; }
#Panel1 QComboBox { background: #2c3038; color: #eef0f3; border: 1px solid #4b525e;
                    border-radius: 3px; padding: 2px 6px; }
#Panel1 QComboBox QAbstractItemView { background: #2c3038; color: #eef0f3;
                                      selection-background-color: #1f6fb2; }
#Panel1 QSlider::groove:vertical { background: #121418; width: 4px; border-radius: 2px; }
#Panel1 QSlider::handle:vertical { background: #c9ced6; height: 10px; margin: 0 -6px;
                                   border-radius: 3px; }
#Panel1 QSlider::groove:horizontal { background: #121418; height: 4px; border-radius: 2px; }
#Panel1 QSlider::handle:horizontal { background: #c9ced6; width: 10px; margin: -6px 0;
                                     border-radius: 3px; }
#Panel1 QSlider::handle:disabled { background: #50555e; }
#EditTimeSlice { background: #101215; color: #7fe08a; border: 1px solid #3a3f48;
                 font-family: monospace; padding: 2px; }
#LabelSummary { color: #8d96a3; font-size: 8pt; }
)";

// The panel on paper: the same sheet with ink on white. Each screen colour has its paper
// colour, so the two looks can never disagree on what they style.
QString PaperPanelStyle() {
    static const std::pair<const char*, const char*> kInk[] = {
        {"#202329", "#ffffff"},           {"#0c0d10", "#808080"}, {"#4b525e", "#808080"},
        {"#c9ced6", "#000000"},           {"#8d96a3", "#303030"}, {"#353a43", "#a0a0a0"},
        {"#4a4f57", "#ececec"},           {"#f0f2f5", "#000000"}, {"#343944", "#f4f4f4"},
        {"#dfe3e8", "#000000"},           {"#1f6fb2", "#c8d8e8"}, {"#124a78", "#404040"},
        {"color: white", "color: black"}, {"#2a2e35", "#f4f4f4"}, {"#2c3038", "#ffffff"},
        {"#eef0f3", "#000000"},           {"#121418", "#808080"}, {"#50555e", "#808080"},
        {"#101215", "#ffffff"},           {"#7fe08a", "#000000"}, {"#3a3f48", "#808080"}};
    QString style = QLatin1String(kPanelStyle);
    for (const auto& [screen, paper] : kInk) {
        style.replace(QLatin1String(screen), QLatin1String(paper));
    }
    return style;
}

QLabel* SmallLabel(const QString& text, const char* role, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setProperty("role", role);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

}  // namespace

ViewControls::ViewControls(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("Panel1"));
    setFixedWidth(kPanelWidth);
    // A short window clips the panel rather than growing: the legend gives way first.
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    setMinimumHeight(0);
    setStyleSheet(QLatin1String(kPanelStyle));
    // A short window scrolls the panel rather than squeezing its trackbars.
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* scroll = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("Panel1Scroll"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* content = new QWidget(scroll);
    content->setObjectName(QStringLiteral("Panel1Content"));
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(8, 4, 8, 8);
    layout->setSpacing(4);
    layout->addWidget(BuildSelectors());
    layout->addWidget(BuildGraphParams());
    layout->addWidget(BuildTimeSlice());
    layout->addWidget(BuildLegend());
    panelReference_ = new ReferenceNote(content);
    layout->addWidget(panelReference_);
    layout->addStretch(1);
    summary_ = new QLabel(this);
    summary_->setObjectName(QStringLiteral("LabelSummary"));
    summary_->setWordWrap(true);
    layout->addWidget(summary_);
    scroll->setWidget(content);
    outer->addWidget(scroll);

    // The perspective has no visible control: the tab change sets it.
    perspective_ = new QScrollBar(Qt::Horizontal, this);
    perspective_->setObjectName(QStringLiteral("ScrollBar_Perspective"));
    perspective_->setToolTip(tr("Perspective"));
    perspective_->hide();
    editPerspective_ = new QLabel(this);
    editPerspective_->setObjectName(QStringLiteral("EditPerspective"));
    editPerspective_->hide();
    SwitchBarMode(false, {});
}

QWidget* ViewControls::BuildSelectors() {
    auto* box = new QGroupBox(tr("Data"), this);
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(4, 6, 4, 4);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(4);

    auto* beforeAfter = new QWidget(box);
    beforeAfter->setObjectName(QStringLiteral("BeforeAfter"));
    auto* baLayout = new QHBoxLayout(beforeAfter);
    baLayout->setContentsMargins(0, 0, 0, 0);
    baLayout->setSpacing(2);
    btnBefore_ = new PanelButton(tr("Before"), beforeAfter);
    btnBefore_->setObjectName(QStringLiteral("BtnEQBefore"));
    btnBefore_->setToolTip(tr("Measured before calibration"));
    btnAfter_ = new PanelButton(tr("After"), beforeAfter);
    btnAfter_->setObjectName(QStringLiteral("BtnEQAfter"));
    btnAfter_->setToolTip(tr("Measured after calibration"));
    btnBefore_->setPressed(true);
    baLayout->addWidget(btnBefore_);
    baLayout->addWidget(btnAfter_);
    grid->addWidget(beforeAfter, 0, 0);

    auto* chFreq = new QWidget(box);
    chFreq->setObjectName(QStringLiteral("ChFreq"));
    auto* cfLayout = new QHBoxLayout(chFreq);
    cfLayout->setContentsMargins(0, 0, 0, 0);
    cfLayout->setSpacing(2);
    ch_ = new PanelButton(tr("Ch"), chFreq);
    ch_->setObjectName(QStringLiteral("Ch"));
    ch_->setToolTip(tr("One chart per channel"));
    freq_ = new PanelButton(tr("Freq"), chFreq);
    freq_->setObjectName(QStringLiteral("Freq"));
    freq_->setToolTip(tr("One chart per frequency band"));
    ch_->setPressed(true);
    cfLayout->addWidget(ch_);
    cfLayout->addWidget(freq_);
    grid->addWidget(chFreq, 1, 0);

    // The mode's index lives in a radio group that the Ch and Freq panels stand in for.
    auto* radio = new QGroupBox(box);
    radio->setObjectName(QStringLiteral("RadioGroup1"));
    radioGroup1_ = new QButtonGroup(radio);
    auto* radioLayout = new QHBoxLayout(radio);
    const QString items[2] = {tr("Ch"), tr("Freq")};
    for (int i = 0; i < 2; ++i) {
        auto* button = new QRadioButton(items[i], radio);
        radioLayout->addWidget(button);
        radioGroup1_->addButton(button, i);
    }
    radioGroup1_->button(0)->setChecked(true);
    radio->hide();

    comboChannel_ = new QComboBox(box);
    comboChannel_->setObjectName(QStringLiteral("ComboChannel"));
    comboChannel_->setToolTip(tr("Channel"));
    comboChannel_->addItem(QStringLiteral("ALL"));
    grid->addWidget(comboChannel_, 2, 0);
    return box;
}

StepButton* ViewControls::MakeStep(Step step, Qt::ArrowType arrow, const QString& hint) {
    static const char* const kNames[kStepCount] = {
        "Zoom_Down",    "Zoom_Up",       "Move_Down",   "Move_Up",        "Elevation_Down",
        "Elevation_Up", "Rotation_Down", "Rotation_Up", "TimeSlice_Down", "TimeSlice_Up"};
    auto* button = new StepButton(arrow, this);
    button->setObjectName(QLatin1String(kNames[static_cast<int>(step)]));
    button->setToolTip(hint);
    steps_[static_cast<int>(step)] = button;
    return button;
}

QWidget* ViewControls::BuildTrackColumn(Track track, const QString& letter, const QString& hint,
                                        int max, int position, QLabel* caption) {
    static const char* const kNames[kTrackCount] = {"Track_Zoom", "Track_Move", "Track_Elevation",
                                                    "Track_Rotation", "Track_TimeSlice"};
    const int index = static_cast<int>(track);
    auto* column = new QWidget(this);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(SmallLabel(letter, "letter", column));
    layout->addWidget(MakeStep(static_cast<Step>(index * 2 + 1), Qt::UpArrow, hint), 0,
                      Qt::AlignHCenter);
    auto* slider = new QSlider(Qt::Vertical, column);
    slider->setObjectName(QLatin1String(kNames[index]));
    slider->setRange(0, max);
    slider->setValue(position);
    slider->setToolTip(hint);
    slider->setFixedHeight(kTrackHeight);
    slider->setPageStep(1);
    tracks_[index] = slider;
    layout->addWidget(slider, 0, Qt::AlignHCenter);
    layout->addWidget(MakeStep(static_cast<Step>(index * 2), Qt::DownArrow, hint), 0,
                      Qt::AlignHCenter);
    if (caption != nullptr) {
        caption->setParent(column);
        caption->setFixedHeight(16);
        layout->addWidget(caption);
    } else {
        layout->addSpacing(16 + layout->spacing());
    }
    return column;
}

QWidget* ViewControls::BuildGraphParams() {
    auto* box = new QGroupBox(tr("View"), this);
    box->setObjectName(QStringLiteral("GraphParams"));
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(2, 6, 2, 2);
    row->setSpacing(2);
    editElevation_ = SmallLabel(QStringLiteral("12"), "value", nullptr);
    editElevation_->setObjectName(QStringLiteral("EditElevation"));
    editElevation_->setToolTip(tr("Elevation: click to restore"));
    editRotation_ = SmallLabel(QStringLiteral("50"), "value", nullptr);
    editRotation_->setObjectName(QStringLiteral("EditRotation"));
    editRotation_->setToolTip(tr("Rotation: click to restore"));
    row->addWidget(BuildTrackColumn(Track::Zoom, QStringLiteral("Z"), tr("Zoom"), 19, 18, nullptr));
    row->addWidget(BuildTrackColumn(Track::Move, QStringLiteral("M"), tr("Move"), 40, 20, nullptr));
    row->addWidget(BuildTrackColumn(Track::Elevation, QStringLiteral("E"), tr("Elevation"), 90, 12,
                                    editElevation_));
    row->addWidget(BuildTrackColumn(Track::Rotation, QStringLiteral("R"), tr("Rotation"), 90, 50,
                                    editRotation_));
    return box;
}

QWidget* ViewControls::BuildTimeSlice() {
    auto* panel = new QGroupBox(tr("Time slice"), this);
    panel->setObjectName(QStringLiteral("PanelTimeSlice"));
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(4, 6, 4, 4);
    layout->setSpacing(4);
    btnTimeSlice_ = new PanelButton(tr("Bar Graph"), panel);
    btnTimeSlice_->setObjectName(QStringLiteral("BtnTimeSlice"));
    btnTimeSlice_->setToolTip(tr("Bars of one time slice"));
    layout->addWidget(btnTimeSlice_);

    editTimeSliceBorder_ = new QWidget(panel);
    editTimeSliceBorder_->setObjectName(QStringLiteral("EditTimeSliceBorder"));
    auto* border = new QHBoxLayout(editTimeSliceBorder_);
    border->setContentsMargins(0, 0, 0, 0);
    editTimeSlice_ = new QLabel(view_axis::ReverbTimeSliceCaption(0), editTimeSliceBorder_);
    editTimeSlice_->setObjectName(QStringLiteral("EditTimeSlice"));
    editTimeSlice_->setAlignment(Qt::AlignCenter);
    border->addWidget(editTimeSlice_);
    layout->addWidget(editTimeSliceBorder_);

    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    row->addWidget(MakeStep(Step::TimeSliceDown, Qt::LeftArrow, tr("Zoom")));
    auto* slider = new QSlider(Qt::Horizontal, panel);
    slider->setObjectName(QStringLiteral("Track_TimeSlice"));
    slider->setRange(0, 19);
    slider->setPageStep(1);
    tracks_[static_cast<int>(Track::TimeSlice)] = slider;
    row->addWidget(slider, 1);
    row->addWidget(MakeStep(Step::TimeSliceUp, Qt::RightArrow, tr("Zoom")));
    layout->addLayout(row);
    panelTimeSlice_ = panel;
    panel->hide();
    return panel;
}

QWidget* ViewControls::BuildLegend() {
    auto* panel = new QGroupBox(tr("Legend"), this);
    panel->setObjectName(QStringLiteral("PanelLegend"));
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(6, 6, 6, 4);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(3);
    static const char* const kDesign[kLegendEntries] = {"16k", "8k",  "4k",  "2k", "1k",
                                                        "500", "250", "125", "63", "63"};
    for (int i = 0; i < kLegendEntries; ++i) {
        auto* shape = new QFrame(panel);
        shape->setObjectName(QStringLiteral("Shape%1").arg(i + 1));
        shape->setFixedSize(16, 10);
        shape->setAutoFillBackground(true);
        shapes_[i] = shape;
        auto* title = new QLabel(QLatin1String(kDesign[i]), panel);
        title->setObjectName(QStringLiteral("LegendTitle%1").arg(i + 1));
        legendTitles_[i] = title;
        legendCaptions_[i] = title->text();
        grid->addWidget(shape, i % 5, (i / 5) * 2);
        grid->addWidget(title, i % 5, (i / 5) * 2 + 1);
    }
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->setAlignment(Qt::AlignTop);
    panel->installEventFilter(this);
    panelLegend_ = panel;
    Swatches white;
    white.fill(Qt::white);
    SetLegend({}, white);
    return panel;
}

void ViewControls::SetLegend(const QStringList& captions, const Swatches& swatches) {
    for (int i = 0; i < kLegendEntries; ++i) {
        if (i < captions.size()) {
            legendCaptions_[i] = captions[i];
        }
        shapes_[i]->setStyleSheet(
            QStringLiteral("background:%1; border:1px solid #5a606a;").arg(swatches[i].name()));
        shapes_[i]->setProperty("colour", swatches[i]);
    }
    ArrangeLegend();
}

void ViewControls::ArrangeLegend() {
    // Two columns while both columns' captions fit side by side; otherwise one, listing what
    // has a caption, so that "Surround A" is read whole. Only a panel too narrow even for that
    // cuts a caption, and its tool tip has it all.
    auto* grid = static_cast<QGridLayout*>(panelLegend_->layout());
    legendTitles_[0]->ensurePolished();
    const QFontMetrics metrics(legendTitles_[0]->font());
    const int inner = panelLegend_->contentsRect().width() - grid->contentsMargins().left() -
                      grid->contentsMargins().right();
    const int gap = grid->horizontalSpacing();
    const int entry = shapes_[0]->width() + gap;
    constexpr int kRows = kLegendEntries / 2;
    std::array<int, 2> widest{};
    for (int i = 0; i < kLegendEntries; ++i) {
        widest[i / kRows] =
            std::max(widest[i / kRows], metrics.horizontalAdvance(legendCaptions_[i]));
    }
    const bool paired = inner <= 0 || widest[0] + widest[1] + 2 * entry + gap <= inner;
    int row = 0;
    for (int i = 0; i < kLegendEntries; ++i) {
        QLabel* title = legendTitles_[i];
        const QString& caption = legendCaptions_[i];
        const QString shown =
            paired ? caption : metrics.elidedText(caption, Qt::ElideRight, inner - entry);
        title->setText(shown);
        title->setToolTip(shown == caption ? QString() : caption);
        const bool listed = paired || !caption.isEmpty();
        shapes_[i]->setVisible(listed);
        title->setVisible(listed);
        grid->removeWidget(shapes_[i]);
        grid->removeWidget(title);
        if (listed) {
            const int r = paired ? i % kRows : row++;
            const int column = paired ? (i / kRows) * 2 : 0;
            grid->addWidget(shapes_[i], r, column);
            grid->addWidget(title, r, column + 1);
        }
    }
    panelLegend_->updateGeometry();
}

bool ViewControls::eventFilter(QObject* watched, QEvent* event) {
    if (watched == panelLegend_ && event->type() == QEvent::Resize) {
        ArrangeLegend();
    }
    return QFrame::eventFilter(watched, event);
}

QString ViewControls::LegendCaption(int i) const {
    return legendCaptions_.at(i);
}

QColor ViewControls::LegendColour(int i) const {
    return shapes_.at(i)->property("colour").value<QColor>();
}

void ViewControls::SwitchBarMode(bool on, const QString& hint) {
    barMode_ = on;
    btnTimeSlice_->setPressed(on);
    QWidget* sliceControls[] = {editTimeSlice_, editTimeSliceBorder_, TrackBar(Track::TimeSlice),
                                StepButtonOf(Step::TimeSliceDown), StepButtonOf(Step::TimeSliceUp)};
    for (QWidget* widget : sliceControls) {
        widget->setVisible(on);
    }
    if (on) {
        for (int i = 2; i < 5; ++i) {
            sliceControls[i]->setToolTip(hint);
        }
    }
    UpdateLegendVisibility();
}

void ViewControls::UpdateLegendVisibility() {
    panelLegend_->setVisible(!barMode_ && height() >= kLegendMinHeight);
}

void ViewControls::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    UpdateLegendVisibility();
}

void ViewControls::SetPaperLook(bool paper) {
    setStyleSheet(paper ? PaperPanelStyle() : QString(QLatin1String(kPanelStyle)));
}

}  // namespace sonalyx
