// What a page lies in.
#pragma once

#include <QScrollArea>

namespace vek {

/// Gives its page all the room there is, and scrolls below the page's least size.
class PageScroll : public QScrollArea {
    Q_OBJECT

  public:
    explicit PageScroll(QWidget* parent = nullptr);

    /// Takes a page, which belongs to this then.
    void Hold(QWidget* page);

    /// What the page wants now; Qt keeps the first answer.
    QSize sizeHint() const override;
    /// The least that is of use; the page scrolls then.
    QSize minimumSizeHint() const override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace vek
