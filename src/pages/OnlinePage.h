// The page "Online" (frame "Matrix Control"): the port table, search, disconnect and the diagnostic lines.
#pragma once

#include <QStringList>
#include <QWidget>

#include <functional>

class QCheckBox;
class QPlainTextEdit;
class QPushButton;

namespace vek {

class PortRows;

class OnlinePage : public QWidget {
    Q_OBJECT

  public:
    /// `deviceNames` tells the devices of COM1 … COM4.
    explicit OnlinePage(std::function<QStringList()> deviceNames, QWidget* parent = nullptr);

    /// True while diagnostic lines are written, whichever page is in front.
    bool DiagnosticsOn() const;
    void AppendDiagnostics(const QString& text);

    // Owned by this page.
    PortRows* Ports;
    QPushButton* OnlineSearch;
    QPushButton* OnlineCancel;
    QPushButton* SaveTranscript;

  private:
    QCheckBox* showDiagnostics_;
    QPlainTextEdit* Text2_;
};

} // namespace vek
