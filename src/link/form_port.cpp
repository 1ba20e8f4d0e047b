#include "link/form_port.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include "link/drop_down_combo_box.h"

namespace sonalyx {

namespace {

QPalette colours(const QPalette& base, Qt::GlobalColor background, Qt::GlobalColor text) {
    QPalette palette = base;
    for (QPalette::ColorRole role : {QPalette::Window, QPalette::Base, QPalette::Button}) {
        palette.setColor(role, background);
    }
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, text);
    }
    return palette;
}

template <typename Widget>
Widget* named(Widget* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

}  // namespace

TFormPort::TFormPort(const QList<PortChoice>& ports, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowStaysOnTopHint) {
    setObjectName(QStringLiteral("FormPort"));
    setWindowTitle(QStringLiteral("Sonalyx"));
    setFixedSize(184, 241);
    setAutoFillBackground(true);
    setPalette(colours(palette(), Qt::black, Qt::white));
    setFont(QFont(QStringLiteral("Arial")));
    buildControls(ports);
    placeControls();
    connectHandlers();
}

void TFormPort::buildControls(const QList<PortChoice>& ports) {
    Label1 = named(new QLabel(QStringLiteral("Select serial port"), this), "Label1");
    ComboBox1 = named(new DropDownComboBox(this), "ComboBox1");
    fillPorts(ports);
    Label2 = named(new QLabel(QStringLiteral("Select receiving data"), this), "Label2");
    GroupBox1 = named(new QGroupBox(this), "GroupBox1");
    cbReverb = named(new QCheckBox(QStringLiteral("Reverb"), GroupBox1), "cbReverb");
    cbGroupDelay = named(new QCheckBox(QStringLiteral("Group Delay"), GroupBox1), "cbGroupDelay");
    cbTORVEPara =
        named(new QCheckBox(QStringLiteral("TORVE Parameters"), GroupBox1), "cbTORVEPara");
    for (QCheckBox* box : {cbReverb, cbGroupDelay, cbTORVEPara}) {
        box->setChecked(true);
    }
    cbNoTimeout =
        named(new QCheckBox(QStringLiteral("NoTimeout(Monitor Mode only)"), this), "cbNoTimeout");
    cbNoTimeout->setVisible(false);
    Button1 = named(new QPushButton(QStringLiteral("OK"), this), "Button1");
    Button1->setDefault(true);
    Button2 = named(new QPushButton(QStringLiteral("CANCEL"), this), "Button2");
}

void TFormPort::fillPorts(const QList<PortChoice>& ports) {
    for (const PortChoice& port : ports) {
        ComboBox1->addItem(port.caption(), port.name);
        ComboBox1->setItemData(ComboBox1->count() - 1, port.caption(), Qt::ToolTipRole);
    }
#ifndef Q_OS_WIN
    // Serial devices have many names outside Windows; let the user type one that is not listed.
    ComboBox1->setEditable(true);
    ComboBox1->setInsertPolicy(QComboBox::NoInsert);
#endif
    // The list is as wide as its longest description, however narrow the box; the box itself
    // shows the chosen port's name, the description in its tip.
    ComboBox1->view()->setMinimumWidth(ComboBox1->view()->sizeHintForColumn(0) + 8);
    connect(ComboBox1, &QComboBox::currentIndexChanged, this, [this](int index) {
        ComboBox1->setToolTip(ComboBox1->itemData(index, Qt::ToolTipRole).toString());
        if (ComboBox1->isEditable() && index >= 0) {
            ComboBox1->setEditText(ComboBox1->itemData(index).toString());
        }
    });
    ComboBox1->setCurrentIndex(-1);
    ComboBox1->setCurrentIndex(ports.isEmpty() ? -1 : 0);
}

void TFormPort::placeControls() {
    Label1->setGeometry(12, 8, 160, 20);
    ComboBox1->setGeometry(12, 30, 160, 26);
    Label2->setGeometry(12, 66, 160, 20);
    GroupBox1->setGeometry(12, 88, 160, 100);
    cbReverb->setGeometry(10, 10, 145, 24);
    cbGroupDelay->setGeometry(10, 38, 145, 24);
    cbTORVEPara->setGeometry(10, 66, 145, 24);
    cbNoTimeout->setGeometry(12, 190, 160, 20);
    Button1->setGeometry(12, 201, 76, 30);
    Button2->setGeometry(96, 201, 76, 30);
}

void TFormPort::connectHandlers() {
    connect(Button1, &QPushButton::clicked, this, &TFormPort::OnClickOk);
    connect(Button2, &QPushButton::clicked, this, &QDialog::reject);
    for (QCheckBox* box : {cbReverb, cbGroupDelay, cbTORVEPara}) {
        connect(box, &QCheckBox::clicked, this, [this, box] { keepOneKindChecked(box); });
    }
    connect(ComboBox1, &DropDownComboBox::droppedDown, this, &TFormPort::ComboBox1DropDown);
    connect(ComboBox1, &DropDownComboBox::closedUp, this, &TFormPort::ComboBox1CloseUp);
}

QString TFormPort::PortName() const {
    const QString text = ComboBox1->currentText().trimmed();
    // Where the box shows a listed port's caption, the name is the item's.
    const int listed = ComboBox1->findText(text);
    if (listed >= 0) {
        return ComboBox1->itemData(listed).toString();
    }
    if (!text.isEmpty()) {
        return text;
    }
    return ComboBox1->count() > 0 ? ComboBox1->itemData(0).toString() : QStringLiteral("COM1");
}

bool TFormPort::ReceiveReverb() const {
    return cbReverb->isChecked();
}
bool TFormPort::ReceiveGroupDelay() const {
    return cbGroupDelay->isChecked();
}
bool TFormPort::ReceiveTORVEPara() const {
    return cbTORVEPara->isChecked();
}

bool TFormPort::anyKindChecked() const {
    return cbReverb->isChecked() || cbGroupDelay->isChecked() || cbTORVEPara->isChecked();
}

void TFormPort::OnClickOk() {
    if (anyKindChecked()) {
        accept();
    }
}

void TFormPort::keepOneKindChecked(QCheckBox* clicked) {
    if (!anyKindChecked()) {
        clicked->setChecked(true);
    }
}

void TFormPort::ComboBox1DropDown() {
    ComboBox1->setPalette(colours(ComboBox1->palette(), Qt::white, Qt::black));
}

void TFormPort::ComboBox1CloseUp() {
    ComboBox1->setPalette(colours(ComboBox1->palette(), Qt::black, Qt::white));
}

}  // namespace sonalyx
