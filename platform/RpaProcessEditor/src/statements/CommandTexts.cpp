// SPDX-License-Identifier: Apache-2.0

#include "CommandTexts_p.h"

#include <RpaProcessData/RpaExpression.h>
#include <RpaProcessData/RpaPlaces.h>
#include <RpaProcessData/RpaProcess.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbTheme.h>
#include <WbFoundation/FreeNames.h>
#include <WbFoundation/SearchText.h>

#include <QPainter>
#include <QPixmapCache>
#include <QSet>

namespace
{
const RpaCommandInfo* Find(const QString& command)
{
    return RpaCommandCatalogue::Instance()->Find(command);
}

// Without the marker of an expression; where a literal would read alike, the sign of a function tells it.
QString ValueText(RpaArgumentType type, const QString& text)
{
    const bool marked = text.startsWith(QLatin1Char('=')) && RpaExpression::IsPython(type, text);
    if (!marked)
        return text;
    const QString body = text.mid(1).trimmed();
    const bool plain = type == RpaArgumentType::Number || type == RpaArgumentType::Switch ||
                       type == RpaArgumentType::Expression;
    return plain || body.isEmpty() ? body : QStringLiteral("ƒ ") + body;
}

QString ShownArgument(const RpaCommandInfo& info, const RpaStatement& values, const QString& name,
                      const CommandTexts::ElementNames& elements)
{
    if (name == QLatin1String("output"))
        return values.output;
    QString text = values.arguments.value(name);
    const RpaArgumentInfo* argument = info.FindArgument(name);
    if (!argument)
        return text;
    if (argument->type == RpaArgumentType::Switch)
        return text == QLatin1String("true")    ? QStringLiteral("是")
               : text == QLatin1String("false") ? QStringLiteral("否")
                                                : ValueText(argument->type, text);
    if (argument->type == RpaArgumentType::Element && elements) {
        const QString known = elements(text);
        return known.isEmpty() ? text : known;
    }
    for (const RpaChoice& choice : argument->choices)
        if (choice.value == text)
            return choice.title;
    return ValueText(argument->type, text);
}

// One colour per group, in the order of the groups, so that neighbours differ.
QColor GroupColour(const QString& group)
{
    struct Shades
    {
        QRgb light;
        QRgb dark;
    };
    static constexpr Shades colours[] = {{0xff3b82f6, 0xff7fb0ff}, {0xff8e5cf0, 0xffbb9fff},
                                         {0xff2f9e58, 0xff62cc8b}, {0xffe8730c, 0xffff9f4d},
                                         {0xff0f96a8, 0xff4cc4d4}, {0xffd9467f, 0xfff48ab4},
                                         {0xffb88a00, 0xffe0b53c}, {0xff64748b, 0xffa9b3c5},
                                         {0xffe5484d, 0xffff8f92}, {0xff4f6bed, 0xff9db0ff}};
    const int index = RpaCommandCatalogue::Instance()->GetGroups().indexOf(group);
    const Shades& shades = colours[qMax(0, index) % int(std::size(colours))];
    const bool dark = WbTheme::Instance()->GetScheme() == WbTheme::Scheme::Dark;
    return QColor(dark ? shades.dark : shades.light);
}

void DrawTile(QPainter& painter, const QRect& rect, const RpaCommandInfo* info, const QString& letter,
              const QColor& colour)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor soft = colour;
    soft.setAlphaF(0.18);
    painter.setBrush(soft);
    painter.drawRoundedRect(rect, rect.width() / 4.0, rect.width() / 4.0);
    QPixmap icon = info ? WbIcons::Pixmap(info->icon, rect.width() * 2 / 3, WbColor::TextSecondary,
                                          painter.device()->devicePixelRatioF())
                        : QPixmap();
    if (!icon.isNull()) {
        // Drawn in the group's colour: the shape comes from the icon.
        QPainter tint(&icon);
        tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
        tint.fillRect(icon.rect(), colour);
        tint.end();
        QRect target(QPoint(), icon.size() / icon.devicePixelRatio());
        target.moveCenter(rect.center());
        painter.drawPixmap(target, icon);
        return;
    }
    QFont font = painter.font();
    font.setPixelSize(rect.height() * 11 / 20);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(rect, Qt::AlignCenter, letter);
}
} // namespace

QString CommandTexts::Title(const QString& command)
{
    const RpaCommandInfo* info = Find(command);
    return info ? info->title : command;
}

QString CommandTexts::Summary(const RpaStatement& values, const ElementNames& elements)
{
    const RpaCommandInfo* info = Find(values.command);
    if (!info)
        return QStringLiteral("此版本不认识的指令，内容会原样保留");
    return RpaPlaces::Fill(info->summary, [&](const QString& place) {
        QString value = ShownArgument(*info, values, place, elements).left(120);
        value.replace(QLatin1Char('\n'), QLatin1Char(' '));
        return value.isEmpty() ? QStringLiteral("…") : value;
    });
}

bool CommandTexts::Matches(const RpaCommandInfo& info, const QString& search)
{
    const QString all = (QStringList{info.title, info.name, info.group, info.description} + info.keywords)
                            .join(QLatin1Char('\n'));
    // A description is long enough to hold the letters of nearly anything.
    const QStringList read = QStringList{info.title, info.group} + info.keywords;
    const QStringList words = search.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return std::all_of(words.begin(), words.end(), [&all, &read](const QString& word) {
        return all.contains(word, Qt::CaseInsensitive) || SearchText::HasAll(read, word);
    });
}

QStringList CommandTexts::Variables(const RpaProcess& process)
{
    QSet<QString> names;
    process.ForEach([&names](const RpaStatementNode& node) {
        const RpaStatement& values = node.GetValues();
        if (!values.output.isEmpty())
            names.insert(values.output);
        const RpaCommandInfo* info = Find(values.command);
        if (!info)
            return;
        for (const RpaArgumentInfo& argument : info->arguments) {
            const QString text = values.arguments.value(argument.name);
            if (argument.type == RpaArgumentType::Variable && !text.isEmpty())
                names.insert(text);
        }
    });
    QStringList sorted = names.values();
    sorted.sort();
    return sorted;
}

QStringList CommandTexts::LoopVariables(const RpaProcess& process)
{
    QStringList names;
    process.ForEach([&names](const RpaStatementNode& node) {
        const RpaStatement& values = node.GetValues();
        const RpaCommandInfo* info = Find(values.command);
        const bool isLoop = info && info->blockKind == RpaBlockKind::Loop;
        if (isLoop && info->output.type == QLatin1String("any") && !names.contains(values.output) &&
            RpaExpression::IsVariableName(values.output))
            names.append(values.output);
    });
    return names;
}

RpaStatement CommandTexts::NewStatement(const RpaCommandInfo& info, const RpaProcess& process)
{
    RpaStatement statement;
    statement.command = info.name;
    for (const RpaArgumentInfo& argument : info.arguments)
        if (!argument.defaultValue.isEmpty())
            statement.arguments.insert(argument.name, argument.defaultValue);
    const QString& name = info.output.defaultName;
    FreeNames names;
    const QStringList used = Variables(process);
    for (const QString& taken : used)
        names.Take(taken);
    if (!name.isEmpty())
        statement.output = names.Take(name) ? name : names.TakeNumbered(name, 2);
    return statement;
}

bool CommandTexts::HasChildren(const QString& command)
{
    const RpaCommandInfo* info = Find(command);
    return info && info->HasChildren();
}

void CommandTexts::PaintTile(QPainter& painter, const QRect& rect, const QString& command, bool enabled)
{
    const RpaCommandInfo* info = Find(command);
    const QColor colour = info && enabled ? GroupColour(info->group) : QColor(0x8a, 0x8f, 0x98);
    const qreal ratio = painter.device()->devicePixelRatioF();
    // Every row of a list paints its tile in every frame of a scroll.
    const QString key = QStringLiteral("CommandTile/%1/%2/%3/%4/%5")
                            .arg(command, info ? info->icon : QString(), colour.name(),
                                 QString::number(rect.width()), QString::number(ratio));
    QPixmap tile;
    if (!QPixmapCache::find(key, &tile)) {
        tile = QPixmap(rect.size() * ratio);
        tile.setDevicePixelRatio(ratio);
        tile.fill(Qt::transparent);
        QPainter tilePainter(&tile);
        tilePainter.setFont(painter.font());
        DrawTile(tilePainter, QRect(QPoint(), rect.size()), info, Title(command).left(1), colour);
        tilePainter.end();
        QPixmapCache::insert(key, tile);
    }
    painter.drawPixmap(rect.topLeft(), tile);
}
