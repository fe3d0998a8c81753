// The page "Overview": eight modes by eight outputs at once.
#pragma once

#include "pages/OverviewCells.h"
#include "pages/OverviewGeometry.h"

#include <QAbstractScrollArea>

#include <vector>

namespace vek {

struct OverviewState;

/// Shows the whole configuration and says what the user wants; it changes nothing itself. Modes and outputs
/// count from 0. The current place is a cell, or the header of a row.
class Overview : public QAbstractScrollArea {
    Q_OBJECT

  public:
    explicit Overview(QWidget* parent = nullptr);

    /// Paints again what differs from what is shown.
    void Show(const MatrixConfig& config, const Names& names, const std::vector<Finding>& findings);
    const OverviewContent& Content() const { return content_; }

    const OverviewPlace& Current() const { return current_; }
    void SetCurrent(const OverviewPlace& place);

    /// The rows that are compared: none, one that waits for another, or two.
    const std::vector<std::size_t>& Compared() const { return compared_; }
    void Compare(std::vector<std::size_t> modes);

    static constexpr int usualZoom = 100; // percent of the window's font
    static constexpr int zoomStep = 10;
    /// In percent; 50 to 300.
    int Zoom() const { return zoom_; }
    void SetZoom(int percent);

    /// Where a place is in the viewport at the moment.
    QRect RectOf(const OverviewPlace& place) const;
    /// Everything about a place in words.
    QStringList WordsFor(const OverviewPlace& place) const;

  Q_SIGNALS:
    /// The user wants to edit the place: Enter or a double click.
    void Activated(const vek::OverviewPlace& place);
    /// A mode (no output) or an output of a mode.
    void CopyRequested(const vek::OverviewPlace& place);
    void PasteRequested(const vek::OverviewPlace& place);
    void PrintRequested();
    /// For the current place, at a place of the screen.
    void MenuRequested(const QPoint& at);
    void CurrentChanged();
    void ComparedChanged();

  protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void Arrange();
    void UpdateAll();
    void UpdatePlace(const OverviewPlace& place);
    void Reveal(const OverviewPlace& place);
    std::optional<OverviewPlace> PlaceAt(QPoint point) const;
    OverviewState StateOf(const OverviewPlace& place) const;
    QFont ZoomedFont() const;
    bool MoveBy(const QKeyEvent& event);
    void ToggleCompared(std::size_t mode);
    int LegendTop() const;
    QRect LegendRect() const;

    OverviewContent content_;
    OverviewGeometry geometry_;
    OverviewPlace current_ = {0, 0};
    std::vector<std::size_t> compared_;
    int zoom_ = usualZoom;
    int wheelAngle_ = 0; ///< turned, but not enough yet for another size
    int legendHeight_ = 0;
};

} // namespace vek
