#include "ui/form_controls.h"

#include <QComboBox>
#include <QPushButton>

namespace ui {

QComboBox *DropDown(QWidget *parent, const char *name)
{
    auto *combo = new QComboBox(parent);
    combo->setObjectName(QLatin1String(name));
    combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    return combo;
}

QPushButton *FormButton(QWidget *parent, const char *name, const QString &caption, const QString &tip)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(QLatin1String(name));
    b->setToolTip(tip);
    b->setAutoDefault(false);
    return b;
}

} // namespace ui
