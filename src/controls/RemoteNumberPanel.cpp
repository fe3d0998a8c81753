#include "controls/RemoteNumberPanel.h"

#include "controls/KeyFilteredLineEdit.h"
#include "model/Panels.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFrame>
#include <QToolTip>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

std::u16string_view View(const QString& text) {
    return {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())};
}

QString Ordered(NumberList list, const QString& text) {
    return QString::fromStdU16String(OrderedList(list, View(text)));
}

} // namespace

RemoteNumberPanel::RemoteNumberPanel(QWidget* parent)
    : QWidget(parent), Text1(new KeyFilteredLineEdit(
                           [this](QChar key, const QString& rest) { return TakesKey(key, rest); }, this)),
      Label1(new QLabel(this)), mnuHidden(new QMenu(this)) {
    Text1->setObjectName("Text1"_L1);
    Text1->installEventFilter(this);
    Label1->setObjectName("Label1"_L1);
    Label1->setAlignment(Qt::AlignCenter);
    Label1->setTextFormat(Qt::PlainText);
    Label1->setFocusPolicy(Qt::StrongFocus);
    Label1->installEventFilter(this);
    Label1->hide();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(Text1);
    row->addWidget(Label1);
    // The same height in both displays: linking an output must not move its row.
    Label1->setFixedHeight(Text1->sizeHint().height());
    setFocusProxy(Text1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

    mnuHidden->setObjectName("mnuHidden"_L1);
    QAction* mnuLink = mnuHidden->addAction(u"&Link Outputs"_s);
    mnuLink->setObjectName("mnuLink"_L1);
    connect(mnuLink, &QAction::triggered, this, &RemoteNumberPanel::LinkClicked);

    connect(Text1, &KeyFilteredLineEdit::textChanged, this, [this] {
        if (suppress)
            return;
        NoteEdit();
        Tidy();
    });
    connect(Text1, &KeyFilteredLineEdit::KeyTyped, this, [this] {
        if (list != NumberList::InputSequence)
            Q_EMIT KeyTyped();
    });
    connect(Text1, &KeyFilteredLineEdit::Left, this, [this] {
        if (edited && !suppress)
            Q_EMIT Change();
    });
    SetMode(Mode());
}

// Destroyed with the focus in it, the box must not tell that it was left.
RemoteNumberPanel::~RemoteNumberPanel() { Text1->disconnect(this); }

void RemoteNumberPanel::SetMode(int mode) {
    list = static_cast<NumberList>(mode);
    Text1->setMaxLength(LongestList(list));
}

QString RemoteNumberPanel::Contents() const { return linked ? QString() : Text1->text(); }

void RemoteNumberPanel::SetContents(const QString& value) {
    suppress = true;
    linked = value.startsWith(u'L');
    stored = value.trimmed();
    if (linked)
        Label1->setText(stored);
    else if (stored != Text1->text())
        Text1->setText(stored);
    Text1->setReadOnly(linked);
    ShowOnly(linked ? static_cast<QWidget*>(Label1) : Text1);
    edited = false;
    suppress = false;
}

void RemoteNumberPanel::ShowOnly(QWidget* display) {
    // First the one, then the other: a focus goes over to what takes its place.
    const bool hadFocus = Text1->hasFocus() || Label1->hasFocus();
    display->show();
    setFocusProxy(display);
    if (hadFocus)
        display->setFocus();
    Text1->setVisible(display == Text1);
    Label1->setVisible(display == Label1);
}

void RemoteNumberPanel::SetAccessibleTitle(const QString& title) {
    setAccessibleName(title);
    Text1->setAccessibleName(title);
    Label1->setAccessibleDescription(title);
}

bool RemoteNumberPanel::TakesKey(QChar key, const QString& rest) {
    const KeyVerdict verdict = CheckListKey(list, key.unicode(), View(rest), taken);
    if (verdict == KeyVerdict::Taken)
        ShowTaken(key.toUpper());
    return verdict == KeyVerdict::Accept;
}

void RemoteNumberPanel::ShowTaken(QChar panel) {
    const auto& output = taken[PanelCharToIndex(panel.toLatin1())];
    QToolTip::showText(Text1->mapToGlobal(QPoint(0, Text1->height())),
                       u"Panel %1 is used by output %2"_s.arg(panel).arg(*output), Text1);
}

void RemoteNumberPanel::NoteEdit() {
    if (Text1->text() == stored)
        return;
    stored = Text1->text();
    edited = true;
    Q_EMIT Change();
}

void RemoteNumberPanel::Tidy() {
    const QString text = Text1->text();
    const QString ordered = Ordered(list, text);
    if (linked || ordered == text)
        return;
    const int cursor = Text1->cursorPosition();
    suppress = true;
    // Replaced as the user would do it, so that undo still reaches what was there before.
    Text1->selectAll();
    Text1->insert(ordered);
    if (cursor > 0) // behind the same character as before
        Text1->setCursorPosition(static_cast<int>(ordered.indexOf(text[cursor - 1].toUpper())) + 1);
    suppress = false;
}

void RemoteNumberPanel::Undo(bool redo) {
    suppress = true;
    // Passes over the moments between an edit and its putting in order.
    do
        redo ? Text1->redo() : Text1->undo();
    while ((redo ? Text1->isRedoAvailable() : Text1->isUndoAvailable()) &&
           Ordered(list, Text1->text()) != Text1->text());
    suppress = false;
    NoteEdit();
}

bool RemoteNumberPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        const auto* press = static_cast<QMouseEvent*>(event);
        if (press->button() == Qt::RightButton) {
            mnuHidden->popup(press->globalPosition().toPoint());
            return true;
        }
    }
    if (watched == Label1) {
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
            update(); // the frame around the label shows the focus
        return QWidget::eventFilter(watched, event);
    }
    if (event->type() == QEvent::ContextMenu) {
        contextMenuEvent(static_cast<QContextMenuEvent*>(event));
        return true;
    }
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool redo = key->matches(QKeySequence::Redo);
        if (redo || key->matches(QKeySequence::Undo)) {
            Undo(redo);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void RemoteNumberPanel::contextMenuEvent(QContextMenuEvent* event) {
    // The mouse has been served by its press already.
    if (event->reason() != QContextMenuEvent::Mouse)
        mnuHidden->popup(event->globalPos());
    event->accept();
}

void RemoteNumberPanel::paintEvent(QPaintEvent*) {
    if (!linked)
        return;
    QPainter painter(this);
    QStyleOptionFrame option;
    option.initFrom(this);
    option.lineWidth = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, this);
    option.state |= QStyle::State_Sunken | QStyle::State_ReadOnly;
    option.state.setFlag(QStyle::State_HasFocus, Label1->hasFocus());
    style()->drawPrimitive(QStyle::PE_FrameLineEdit, &option, &painter, this);
}

} // namespace vek
