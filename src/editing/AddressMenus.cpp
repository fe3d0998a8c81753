#include "editing/AddressMenus.h"

#include "controls/TextConversion.h"
#include "dialogs/WindowMessages.h"
#include "editing/ModelView.h"
#include "model/ProgramState.h"
#include "pages/AddressesPage.h"

#include <QMenu>

namespace vek {

AddressMenus::AddressMenus(AddressesPage& page, ModelView& view, WindowMessages& messages, QObject* parent)
    : QObject(parent), page_(page), view_(view), messages_(messages) {
    for (const EnableMenu& menu : EnableMenus())
        MakeMenu(menu);
    connect(&page, &AddressesPage::Clicked, this, &AddressMenus::Toggle);
    connect(&page, &AddressesPage::MenuRequested, this, &AddressMenus::Open);
}

void AddressMenus::MakeMenu(const EnableMenu& menu) {
    auto* top = new QMenu(FromConstant(menu.Caption), &page_);
    top->setObjectName(FromConstant(menu.Name));
    for (const EnableSubmenu& submenu : menu.Submenus) {
        if (submenu.Name.empty()) {
            Fill(*top, menu.Group, submenu);
            continue;
        }
        QMenu* level = top->addMenu(FromConstant(submenu.Caption));
        level->setObjectName(FromConstant(submenu.Name));
        Fill(*level, menu.Group, submenu);
    }
    menus_[static_cast<std::size_t>(menu.Group)] = top;
}

void AddressMenus::Fill(QMenu& level, AddressGroup group, const EnableSubmenu& submenu) {
    for (std::size_t i = 0; i < submenu.Entries.size(); ++i) {
        if (i > 0 && i % 2 == 0)
            level.addSeparator()->setObjectName(FromConstant(submenu.SeparatorNames[i / 2 - 1]));
        const EnableMenuEntry& entry = submenu.Entries[i];
        QAction* action = level.addAction(FromConstant(entry.Caption));
        action->setObjectName(FromConstant(entry.Name));
        connect(action, &QAction::triggered, this, [this, group, &entry] { Apply(group, entry); });
    }
}

std::size_t& AddressMenus::Remembered(AddressGroup group) {
    return group == AddressGroup::Volume ? rememberedVolume_ : rememberedRoute_;
}

void AddressMenus::Toggle(AddressGroup group, std::size_t function) {
    Guarded(messages_, [&] { view_.ToggleAddress(group, function); });
}

void AddressMenus::Open(AddressGroup group, std::size_t function, const QPoint& globalPosition) {
    if (group != AddressGroup::Mode)
        Remembered(group) = function;
    menus_[static_cast<std::size_t>(group)]->popup(globalPosition);
}

void AddressMenus::Apply(AddressGroup group, const EnableMenuEntry& entry) {
    Guarded(messages_, [&] { view_.ApplyAddressMenu(group, entry, Remembered(group)); });
}

} // namespace vek
