#include "AboutDialog.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>

#include <QBoxLayout>
#include <QClipboard>
#include <QCoreApplication>
#include <QFormLayout>
#include <QGuiApplication>
#include <QSysInfo>

namespace
{
QString Compiler()
{
#if defined(__clang__)
    return QStringLiteral("Clang %1.%2").arg(__clang_major__).arg(__clang_minor__);
#elif defined(__GNUC__)
    return QStringLiteral("GCC %1.%2").arg(__GNUC__).arg(__GNUC_MINOR__);
#else
    return QStringLiteral("—");
#endif
}

QString Line(const QString& name, const QString& value)
{
    return name + QLatin1Char('\t') + value + QLatin1Char('\n');
}
} // namespace

QString AboutDialog::BuildFacts()
{
    return Line(QStringLiteral("版本"), QCoreApplication::applicationVersion()) +
           Line(QStringLiteral("Qt"),
                QStringLiteral("%1（以 %2 构建）")
                    .arg(QString::fromLatin1(qVersion()), QLatin1String(QT_VERSION_STR))) +
           Line(QStringLiteral("编译器"), Compiler()) +
           Line(QStringLiteral("二进制接口"), QSysInfo::buildAbi()) +
           Line(QStringLiteral("系统"), QSysInfo::prettyProductName());
}

AboutDialog::AboutDialog(QWidget* parent) : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true)
{
    setObjectName(QStringLiteral("AboutDialog"));
    SetTitle(QStringLiteral("关于工作站"));
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(32, 24, 32, 24);
    layout->setSpacing(16);
    layout->addWidget(new WbLabel(QStringLiteral("RPA 工作站：搭建、调试和发布自动化应用。"), this));
    auto* facts = new QFormLayout;
    facts->setHorizontalSpacing(24);
    facts->setVerticalSpacing(8);
    for (const QString& line : BuildFacts().split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        auto* value = new WbLabel(line.section(QLatin1Char('\t'), 1), this);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        facts->addRow(new WbLabel(line.section(QLatin1Char('\t'), 0, 0), this), value);
    }
    layout->addLayout(facts);
    layout->addStretch();

    auto* copy = new WbPushButton(this, Wb::SecondaryButton);
    copy->setObjectName(QStringLiteral("buttonCopyFacts"));
    copy->setText(QStringLiteral("复制"));
    auto* close = new WbPushButton(this, Wb::PrimaryButton);
    close->setObjectName(QStringLiteral("buttonCloseAbout"));
    close->setText(QStringLiteral("关闭"));
    close->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addStretch();
    buttons->addWidget(copy);
    buttons->addWidget(close);
    layout->addLayout(buttons);
    connect(copy, &QPushButton::clicked, this, [] { QGuiApplication::clipboard()->setText(BuildFacts()); });
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    close->setFocus();
}
