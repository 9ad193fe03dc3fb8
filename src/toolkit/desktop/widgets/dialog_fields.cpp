#include "toolkit/desktop/widgets/dialog_fields.h"

#include "toolkit/desktop/widgets/field_widgets.h"
#include "toolkit/desktop/widgets/qt_text.h"
#include "toolkit/desktop/widgets/table_view.h"
#include "toolkit/field_number.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>

namespace keldrin {

namespace {

bool isEdit(ControlKind kind) {
    return kind == ControlKind::Text || isNumberField(kind);
}

// A little wider than the widest number that a field shows.
int usualWidth(const ControlSpec &spec) {
    constexpr int widestInteger = 6;
    constexpr int widestReal = 11;
    constexpr int usualText = 26;
    if (spec.kind == ControlKind::Text) {
        return spec.length > 0 ? std::min(spec.length, usualText) : usualText;
    }
    return spec.kind == ControlKind::Integer ? widestInteger : widestReal;
}

QWidget *makeEdit(const ControlSpec &spec, QWidget *parent) {
    auto *edit = new FieldEdit(spec.width > 0 ? spec.width : usualWidth(spec), parent);
    const bool number = isNumberField(spec.kind);
    edit->setAlignment(number ? Qt::AlignRight | Qt::AlignVCenter
                              : Qt::AlignLeft | Qt::AlignVCenter);
    edit->setSizePolicy(number ? QSizePolicy::Preferred : QSizePolicy::Expanding,
                        QSizePolicy::Fixed);
    if (number) {
        edit->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    }
    return edit;
}

QWidget *makeStatic(const ControlSpec &spec, QWidget *parent) {
    if (spec.look == StaticLook::GroupTitle) {
        return new QGroupBox(parent);
    }
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(spec.look == StaticLook::Help);
    return label;
}

QWidget *makeList(const ControlSpec &spec, QWidget *parent) {
    if (spec.rows > 0) {
        return new OpenList(spec.rows, parent);
    }
    auto *list = new DropList(parent);
    list->setMaxVisibleItems(std::max(list->maxVisibleItems(), spec.length));
    list->setFocusPolicy(Qt::StrongFocus); // the wheel alone does not bring the focus
    return list;
}

QWidget *makeButton(QWidget *parent) {
    auto *button = new QPushButton(parent);
    button->setAutoDefault(false);
    return button;
}

QWidget *makeBar(QWidget *parent) {
    constexpr int columns = 40; // long enough for its motion to be seen
    auto *bar = new QProgressBar(parent);
    bar->setMinimumWidth(columns * bar->fontMetrics().averageCharWidth());
    return bar;
}

QWidget *makeWidget(const ControlSpec &spec, QWidget *parent) {
    switch (spec.kind) {
    case ControlKind::Static:
        return makeStatic(spec, parent);
    case ControlKind::Check:
        return new QCheckBox(parent);
    case ControlKind::List:
        return makeList(spec, parent);
    case ControlKind::Trackbar:
        return new StationBar(parent);
    case ControlKind::Button:
        return makeButton(parent);
    case ControlKind::Bar:
        return makeBar(parent);
    case ControlKind::Grid:
        return new TableView(spec.rows, parent);
    default:
        return makeEdit(spec, parent);
    }
}

ControlSpec unitOf(const ControlSpec &spec) {
    return {.id = spec.id + UnitIdOffset,
            .label = spec.unit,
            .sameRow = true,
            .look = StaticLook::Unit};
}

QStringList textsOf(const std::vector<std::string> &entries) {
    QStringList texts;
    for (const std::string &entry : entries) {
        texts << qtText(entry);
    }
    return texts;
}

void showEntries(QComboBox &list, const ControlState &control) {
    QStringList shown;
    for (int i = 0; i < list.count(); ++i) {
        shown << list.itemText(i);
    }
    const QStringList entries = textsOf(control.entries);
    if (shown != entries) {
        list.clear();
        list.addItems(entries);
        list.updateGeometry();
    }
    list.setCurrentIndex(control.index - 1);
}

void showEntries(QListWidget &list, const ControlState &control) {
    QStringList shown;
    for (int i = 0; i < list.count(); ++i) {
        shown << list.item(i)->text();
    }
    const QStringList entries = textsOf(control.entries);
    if (shown != entries) {
        list.clear();
        list.addItems(entries);
        list.updateGeometry();
    }
    list.setCurrentRow(control.index - 1);
}

void showText(FieldEdit &edit, const ControlState &control, bool fixed, const QString &unit) {
    const QString text = qtText(control.typed ? *control.typed : control.text);
    if (edit.text() != text) {
        edit.setText(text);
        if (!edit.hasFocus()) {
            edit.setCursorPosition(0); // of a long text the beginning is seen
        }
    }
    const bool unreadable = isNumberField(control.kind) && control.enabled && !fieldNumber(control);
    QString range = rangeText(control, unit);
    if (unreadable && range.isEmpty()) {
        range = control.kind == ControlKind::Integer ? "a whole number" : "a number";
    }
    edit.setLook(unreadable ? FieldEdit::Look::Unreadable
                 : fixed    ? FieldEdit::Look::Fixed
                            : FieldEdit::Look::Usual);
    edit.setToolTip(range);
    edit.setAccessibleDescription(unreadable ? "not a number; " + range : range);
}

// A row without fields is there to be read.
bool rowIsEnabled(const std::vector<DialogField> &fields, std::size_t title) {
    bool any = false;
    for (std::size_t i = title + 1; i < fields.size() && fields[i].spec.sameRow; ++i) {
        if (fields[i].spec.kind != ControlKind::Static && fields[i].widget->isEnabled()) {
            return true;
        }
        any = any || fields[i].spec.kind != ControlKind::Static;
    }
    return !any;
}

void showBar(QProgressBar &bar, int percent) {
    constexpr int whole = 100;
    bar.setRange(0, percent < 0 ? 0 : whole); // without a range it shows that work goes on
    bar.setValue(std::max(percent, 0));
}

void showTrackbar(QSlider &bar, const ControlState &control) {
    bar.setRange(static_cast<int>(control.low), static_cast<int>(control.high));
    bar.setPageStep(control.step);
    bar.setValue(control.index);
}

} // namespace

std::vector<DialogField> makeFields(const DialogSpec &spec, QWidget *parent) {
    std::vector<DialogField> fields;
    const auto add = [&](const ControlSpec &control) {
        fields.push_back({control, makeWidget(control, parent), nullptr});
        fields.back().widget->setObjectName(QString::number(control.id));
    };
    for (const ControlSpec &control : spec.controls) {
        if (control.listedBy != 0) {
            continue; // see button_list.h
        }
        add(control);
        if (!control.unit.empty()) {
            add(unitOf(control));
        }
    }
    return fields;
}

bool isField(ControlKind kind) {
    return isEdit(kind) || kind == ControlKind::List;
}

QString rangeText(const ControlState &control, const QString &unit) {
    if (!isNumberField(control.kind) || !(control.low <= control.high)) {
        return {};
    }
    const QString range = qtText(shownNumber(control.low, control.kind, {}) + " to " +
                                 shownNumber(control.high, control.kind, {}));
    return unit.isEmpty() ? range : range + " " + unit;
}

void greyTexts(const std::vector<DialogField> &fields) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const StaticLook look = fields[i].spec.look;
        if (look == StaticLook::Unit && i > 0) {
            fields[i].widget->setEnabled(fields[i - 1].widget->isEnabled());
        } else if (look == StaticLook::RowTitle) {
            fields[i].widget->setEnabled(rowIsEnabled(fields, i));
        }
    }
}

void showControl(const DialogField &field, const ControlState &control, const QString &text,
                 const QString &unit) {
    const QSignalBlocker quiet(field.widget);
    // What its table never lets be changed is there to be read, and is not greyed.
    const bool fixed = isEdit(field.spec.kind) && !field.spec.enabled && !control.enabled;
    field.widget->setEnabled(control.enabled || fixed);
    if (field.label != nullptr) {
        field.label->setText(text);
        field.label->setEnabled(control.enabled || fixed);
    }
    if (auto *edit = dynamic_cast<FieldEdit *>(field.widget)) {
        showText(*edit, control, fixed, unit);
    } else if (auto *label = qobject_cast<QLabel *>(field.widget)) {
        label->setText(text);
    } else if (auto *button = qobject_cast<QAbstractButton *>(field.widget)) {
        button->setText(text);
        button->setChecked(control.on);
    } else if (auto *list = qobject_cast<QComboBox *>(field.widget)) {
        showEntries(*list, control);
    } else if (auto *open = qobject_cast<QListWidget *>(field.widget)) {
        showEntries(*open, control);
    } else if (auto *table = dynamic_cast<TableView *>(field.widget)) {
        table->showTable(control);
    } else if (auto *trackbar = qobject_cast<QSlider *>(field.widget)) {
        showTrackbar(*trackbar, control);
    } else if (auto *bar = qobject_cast<QProgressBar *>(field.widget)) {
        showBar(*bar, control.index);
    }
}

} // namespace keldrin
