#pragma once

#include <QDialog>
#include <QList>

#include "link/port_list.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QPushButton;

namespace sonalyx {

class DropDownComboBox;

// The port and data selection shown before every receive. It is built afresh for each use and
// always opens with its defaults: the first port, all three kinds checked. Each port is listed
// with what the system says of it; PortName() is the name to open.
class TFormPort : public QDialog {
    Q_OBJECT

  public:
    // ports: what to offer, in order (see offeredPorts()).
    explicit TFormPort(const QList<PortChoice>& ports, QWidget* parent = nullptr);

    QString PortName() const;
    bool ReceiveReverb() const;
    bool ReceiveGroupDelay() const;
    bool ReceiveTORVEPara() const;

  private:
    void buildControls(const QList<PortChoice>& ports);
    void fillPorts(const QList<PortChoice>& ports);
    void placeControls();
    void connectHandlers();
    void OnClickOk();
    void keepOneKindChecked(QCheckBox* clicked);
    bool anyKindChecked() const;
    void ComboBox1DropDown();
    void ComboBox1CloseUp();

    QLabel* Label1;
    DropDownComboBox* ComboBox1;
    QLabel* Label2;
    QGroupBox* GroupBox1;
    QCheckBox* cbReverb;
    QCheckBox* cbGroupDelay;
    QCheckBox* cbTORVEPara;
    QCheckBox* cbNoTimeout;
    QPushButton* Button1;
    QPushButton* Button2;
};

}  // namespace sonalyx
