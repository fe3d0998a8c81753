#include "pages/PageHeading.h"

#include "controls/LayoutHelpers.h"
#include "controls/TextConversion.h"
#include "pages/PageTab.h"

namespace vek {

using namespace Qt::StringLiterals;

PageHeading::PageHeading(QWidget* parent) : ElidedLabel(u" "_s, parent) { setObjectName(u"PageHeading"_s); }

void PageHeading::ShowPage(int tab) {
    QFont strong = font();
    strong.setBold(true);
    setFont(strong);
    tab_ = tab;
    ShowText();
}

void PageHeading::ShowPlace(std::size_t mode, std::size_t output, const Names& names) {
    mode_ = NumberAndName(names, NameKind::Mode, mode);
    output_ = NumberAndName(names, NameKind::Output, output);
    names_ = names;
    ShowText();
}

void PageHeading::ShowCompared(const std::vector<std::size_t>& modes) {
    compared_ = modes;
    ShowText();
}

QString PageHeading::OverviewText() const {
    if (compared_.size() != 2)
        return tr("Overview of all modes and outputs");
    return tr("Overview: %1 compared with %2")
        .arg(NumberAndName(names_, NameKind::Mode, compared_[0]),
             NumberAndName(names_, NameKind::Mode, compared_[1]));
}

void PageHeading::ShowText() {
    const auto words = [this] {
        switch (tab_) {
        case RemotePanelsTab:
            return tr("Remote panels of %1").arg(mode_);
        case LevelsTab:
            return tr("Levels of %1, %2").arg(mode_, output_);
        case AddressesTab:
            return tr("VekNet addresses of all modes, and of %1 in every mode").arg(output_);
        case Rs232Tab:
            return tr("RS232 codes of all outputs, the same in every configuration");
        case InputTrimsTab:
            return tr("Input trims, in every mode");
        case OutputTrimsTab:
            return tr("Output trims, in every mode");
        case NotesTab:
            return tr("Notes and names of the whole configuration");
        case OnlineTab:
            return tr("Online control of a Matrix Vek");
        default:
            return OverviewText();
        }
    };
    if (const QString text = words(); text != this->text()) {
        setText(text);
        SetPlainToolTip(*this, text);
    }
}

} // namespace vek
