// The page "Online" (frame "Matrix Control"): the port table, search, disconnect and the diagnostic lines.
#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace vek {

class PortRows;
struct PortSources;

class OnlinePage : public QWidget {
    Q_OBJECT

  public:
    explicit OnlinePage(const PortSources& ports, QWidget* parent = nullptr);

    /// True while diagnostic lines are written, whichever page is in front.
    bool DiagnosticsOn() const;
    void AppendDiagnostics(const QString& text);

    // Owned by this page.
    PortRows* Ports;
    QPushButton* OnlineSearch;
    QPushButton* OnlineCancel;
    QLabel* SearchHint;
    QPushButton* SaveTranscript;
    QPushButton* WhatIsWrong; ///< hidden until a search has found no Matrix Vek

  private:
    QCheckBox* showDiagnostics_;
    QPlainTextEdit* Text2_;
};

} // namespace vek
