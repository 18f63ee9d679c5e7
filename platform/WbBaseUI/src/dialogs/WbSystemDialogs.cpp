// SPDX-License-Identifier: Apache-2.0

#include <WbBaseUI/WbSystemDialogs.h>

#include <QColorDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QPointer>

namespace
{
// The owner takes the dialog along. Qt's own functions keep theirs on the stack, where a parent that goes
// away would free it.
template <typename Dialog>
class Asked
{
public:
    explicit Asked(Dialog* made) : dialog(made) {}
    ~Asked() { delete dialog.data(); }
    Q_DISABLE_COPY(Asked)

    // Whether there is an answer, and somebody left to have it.
    bool Exec() { return dialog->exec() == QDialog::Accepted && dialog; }

    Dialog* operator->() const { return dialog.data(); }

private:
    QPointer<Dialog> dialog;
};

QString Chosen(Asked<QFileDialog>& files, const QString& place)
{
    if (!place.isEmpty())
        files->selectFile(place);
    return files.Exec() ? files->selectedFiles().value(0) : QString();
}
} // namespace

QString WbSystemDialogs::OpenFile(QWidget* owner, const QString& title, const QString& place,
                                  const QString& filter)
{
    Asked<QFileDialog> files(new QFileDialog(owner, title, QString(), filter));
    files->setFileMode(QFileDialog::ExistingFile);
    return Chosen(files, place);
}

QStringList WbSystemDialogs::OpenFiles(QWidget* owner, const QString& title, const QString& filter)
{
    Asked<QFileDialog> files(new QFileDialog(owner, title, QString(), filter));
    files->setFileMode(QFileDialog::ExistingFiles);
    return files.Exec() ? files->selectedFiles() : QStringList();
}

QString WbSystemDialogs::SaveFile(QWidget* owner, const QString& title, const QString& place,
                                  const QString& filter, bool asksBeforeReplacing)
{
    Asked<QFileDialog> files(new QFileDialog(owner, title, QString(), filter));
    files->setAcceptMode(QFileDialog::AcceptSave);
    files->setFileMode(QFileDialog::AnyFile);
    files->setOption(QFileDialog::DontConfirmOverwrite, !asksBeforeReplacing);
    return Chosen(files, place);
}

QString WbSystemDialogs::OpenFolder(QWidget* owner, const QString& title, const QString& place)
{
    Asked<QFileDialog> files(new QFileDialog(owner, title, place));
    files->setFileMode(QFileDialog::Directory);
    files->setOption(QFileDialog::ShowDirsOnly);
    return Chosen(files, QString());
}

QColor WbSystemDialogs::Color(QWidget* owner, const QString& title, const QColor& current)
{
    Asked<QColorDialog> colours(new QColorDialog(current, owner));
    colours->setWindowTitle(title);
    return colours.Exec() ? colours->selectedColor() : QColor();
}

std::optional<int> WbSystemDialogs::Number(QWidget* owner, const QString& title, const QString& label,
                                           int current, int least, int most)
{
    Asked<QInputDialog> numbers(new QInputDialog(owner));
    numbers->setWindowTitle(title);
    numbers->setInputMode(QInputDialog::IntInput);
    numbers->setLabelText(label);
    numbers->setIntRange(least, most);
    numbers->setIntValue(current);
    return numbers.Exec() ? std::optional<int>(numbers->intValue()) : std::nullopt;
}
