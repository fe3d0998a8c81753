#include "pages/TrimPage.h"

#include "controls/LevelTrim.h"
#include "controls/TextConversion.h"
#include "model/Levels.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace vek {

using namespace Qt::StringLiterals;

TrimPage::TrimPage(std::string_view name, const QString& title, const QString& caption, QWidget* parent)
    : QWidget(parent) {
    auto* frame = new QGroupBox(title, this);
    auto* row = new QHBoxLayout(frame);
    for (std::size_t i = 0; i < Trims.size(); ++i) {
        auto* column = new QVBoxLayout;
        const QString number = caption.arg(i + 1);
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
        column->addWidget(label);
        column->addWidget(trim, 1, Qt::AlignHCenter);
        row->addLayout(column, 1);
    }
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
}

} // namespace vek
