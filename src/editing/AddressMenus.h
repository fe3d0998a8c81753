// The address labels' left clicks and context menus.
#pragma once

#include "model/EnableMenus.h"

#include <QObject>

#include <array>

class QMenu;
class QWidget;

namespace vek {

class AddressesPage;
class ModelView;
class WindowMessages;

class AddressMenus : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object. The menus belong to the page.
    AddressMenus(AddressesPage& page, ModelView& view, WindowMessages& messages, QObject* parent = nullptr);

  private:
    void Toggle(AddressGroup group, std::size_t function);
    void Open(AddressGroup group, std::size_t function, const QPoint& globalPosition);
    void Apply(AddressGroup group, const EnableMenuEntry& entry);
    void MakeMenu(const EnableMenu& menu);
    void Fill(QMenu& level, AddressGroup group, const EnableSubmenu& submenu);
    std::size_t& Remembered(AddressGroup group);

    AddressesPage& page_;
    ModelView& view_;
    WindowMessages& messages_;
    std::array<QMenu*, 4> menus_ = {}; ///< by AddressGroup
    // The label that was right-clicked; the two route groups share one.
    std::size_t rememberedRoute_ = 0;
    std::size_t rememberedVolume_ = 0;
};

} // namespace vek
