#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest/QTest>

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace zem::test {

/// A control of a form; those of the usual kinds need no other header.
template <class Control>
Control& Find(const QWidget& form, const char* name) {
    auto* control = form.findChild<Control*>(QLatin1String(name));
    if (control == nullptr)
        throw std::runtime_error(std::string("no control ") + name);
    return *control;
}

inline void Click(const QWidget& form, const char* button) {
    QTest::mouseClick(&Find<QAbstractButton>(form, button), Qt::LeftButton);
}

inline void PressKey(const QWidget& form, const char* control, Qt::Key key,
                     Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&Find<QWidget>(form, control), key, modifiers);
}

/// Types the text letter by letter.
inline void TypeText(const QWidget& form, const char* box, const QString& text) {
    QTest::keyClicks(&Find<QWidget>(form, box), text);
}

/// The name under which a control keeps its text.
inline const char* TextProperty(const QWidget& control) {
    for (const char* name : {"currentText", "plainText"})
        if (control.property(name).isValid())
            return name;
    return "text";
}

/// The text of a box, a label, a chooser or a button.
inline std::string TextOf(const QWidget& form, const char* control) {
    const auto& widget = Find<QWidget>(form, control);
    return widget.property(TextProperty(widget)).toString().toStdString();
}

inline void SetText(const QWidget& form, const char* box, const char* text) {
    auto& widget = Find<QWidget>(form, box);
    EXPECT_TRUE(widget.setProperty(TextProperty(widget), QString::fromUtf8(text))) << box;
}

inline bool IsEnabled(const QWidget& form, const char* control) {
    return Find<QWidget>(form, control).isEnabled();
}

inline QStringList Rows(const QWidget& form, const char* list) {
    QStringList rows;
    const QAbstractItemModel* model = Find<QAbstractItemView>(form, list).model();
    for (int row = 0; row < model->rowCount(); ++row)
        rows.append(model->index(row, 0).data().toString());
    return rows;
}

/// The selected row of a list, or -1.
inline int SelectedRow(const QWidget& form, const char* list) {
    const QModelIndexList rows = Find<QAbstractItemView>(form, list).selectionModel()->selectedIndexes();
    return rows.isEmpty() ? -1 : rows.constFirst().row();
}

inline void SelectRow(const QWidget& form, const char* list, int row) {
    Find<QListWidget>(form, list).setCurrentRow(row);
}

} // namespace zem::test
