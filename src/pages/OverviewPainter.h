// Draws the parts of the overview, for the screen and for paper.
#pragma once

#include "pages/OverviewCells.h"
#include "pages/OverviewGeometry.h"

#include <QFont>
#include <QPalette>

class QPainter;

namespace vek {

/// How a cell or a header is shown.
struct OverviewState {
    bool Faded = false;   ///< does not stand out in a comparison
    bool Current = false; ///< where the keyboard is
    bool Chosen = false;  ///< a row that is compared
};

/// Sizes for a font and the width that the columns are to fill.
OverviewMetrics MetricsFor(const QFont& font, int width);

/// The signs that a cell of a mode that is used has.
OverviewSigns SignsOf(const OverviewCell& cell);

class OverviewPainter {
  public:
    /// All must outlive this object. Sets the painter's hints and font.
    OverviewPainter(QPainter& painter, const OverviewGeometry& geometry, const QPalette& palette,
                    const QFont& font);

    // Rectangles are those of the geometry, wherever they have been moved to.

    /// `current` when the place of the keyboard is in this row or column.
    void RowHeader(const QRect& rect, const OverviewContent& content, std::size_t mode, OverviewState state,
                   bool current);
    void ColumnHeader(const QRect& rect, const OverviewContent& content, std::size_t output, bool current);
    void Cell(const QRect& rect, const OverviewRow& row, std::size_t output, OverviewState state);

    /// What the signs mean, in a rectangle at least as high as LegendHeight() says for its width.
    void Legend(const QRect& rect);
    static int LegendHeight(const QFont& font, int width);

  private:
    void Frame(const QRect& rect, bool used, OverviewState state);
    void ModeName(const QRect& rect, std::size_t mode, const QString& name);
    void Inputs(const QRect& rect, const OverviewCell& cell);
    void Chip(const QRect& rect, const QString& text, bool strong);
    void Group(const QRect& rect, std::int16_t group);
    void Levels(const QRect& rect, const OverviewCell& cell);
    void Panels(const QRect& rect, const OverviewCell& cell);
    void List(const QRect& rect, const QString& letter, const QString& panels);
    void Mark(const QRect& rect, const OverviewProblems& problems);
    QColor Between(QPalette::ColorRole from, QPalette::ColorRole to, double share) const;
    bool IsDark() const;

    QPainter& painter_;
    const OverviewGeometry& geometry_;
    const QPalette& palette_;
    QFont font_;
    QFont strong_;
    QFont small_;
};

} // namespace vek
