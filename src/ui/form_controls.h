#pragma once
// Controls the dialogs build alike: named so that tests find them by their names.
#include <QString>

class QComboBox;
class QPushButton;
class QWidget;

namespace ui {

// A drop-down list as wide as its rows.
QComboBox *DropDown(QWidget *parent, const char *name);
// A push button with its tool-tip that Enter does not press unless it has the focus.
QPushButton *FormButton(QWidget *parent, const char *name, const QString &caption, const QString &tip);

} // namespace ui
