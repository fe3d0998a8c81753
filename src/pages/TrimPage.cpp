#include "pages/TrimPage.h"

#include "controls/LayoutHelpers.h"
#include "controls/LevelTrim.h"
#include "controls/NameLabel.h"
#include "controls/TextConversion.h"
#include "model/Levels.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace vek {

using namespace Qt::StringLiterals;

TrimPage::TrimPage(std::string_view name, const QString& title, NameKind kind, QWidget* parent)
    : QWidget(parent), kind_(kind) {
    auto* frame = new QGroupBox(title, this);
    auto* row = new QHBoxLayout(frame);
    for (std::size_t i = 0; i < Trims.size(); ++i) {
        auto* column = new QVBoxLayout;
        const QString number = FromConstant(NumberText(kind, i));
        auto* label = new QLabel(number, frame);
        label->setAlignment(Qt::AlignHCenter);
        auto* trim = new LevelTrim(frame);
        trim->setObjectName(ElementName(name, i));
        trim->SetAccessibleTitle(title + ", "_L1 + number);
        trim->SetMaxLevel(trimMaximum);
        trim->SetMinLevel(trimMinimum);
        connect(trim, &LevelTrim::Change, this, &TrimPage::Edited);
        connect(trim, &LevelTrim::TextClicked, this, [this, i] { Q_EMIT TextClicked(i); });
        Trims[i] = trim;
        names_[i] = new NameLabel(frame);
        names_[i]->setAlignment(Qt::AlignHCenter);
        KeepPlaceWhenHidden(names_[i]);
        column->addWidget(label);
        column->addWidget(names_[i]);
        column->addWidget(trim, 1, Qt::AlignHCenter);
        row->addLayout(column, 1);
    }
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
}

void TrimPage::ShowNames(const Names& names) {
    for (std::size_t i = 0; i < names_.size(); ++i)
        names_[i]->SetName(NameOf(names, kind_, i));
}

} // namespace vek
