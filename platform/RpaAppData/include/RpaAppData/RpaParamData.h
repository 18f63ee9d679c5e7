// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>
#include <RpaAppData/RpaRecordList.h>

#include <QByteArray>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <functional>

class JsonReader;
class JsonWriter;

// What a parameter holds: it decides its field, its value and which limits it may have.
enum class RpaParamType
{
    Text,     // QString
    Number,   // double
    Date,     // QDate
    Choice,   // QString, one of the choices
    Switch,   // bool
    File,     // QString, a path
    Password, // QString; lives in memory only, never part of the JSON
    Lines,    // QString of several lines
    Folder,   // QString, a path
    Files,    // QStringList of paths
    Choices,  // QStringList, those of the choices that are picked, in their order
    DateTime, // QDateTime of local time, to the second
    Slider,   // double between least and most
    Progress, // double from 0 to 100, written by runs; lives in memory only
    Picture,  // QString, the path of a picture; likewise
    Group,    // no value: a title over the parameters behind it
};

// One parameter of a UI page: a field that the user fills in before a run.
struct RPAAPPDATA_EXPORT RpaParamItem
{
    QString name;  // what processes read; unique in the page
    QString label; // what the user sees; the name when empty
    RpaParamType type = RpaParamType::Text;
    QString foreignType;   // a newer client's type, treated as Text here and written back
    QVariant defaultValue; // invalid for none
    QVariant value;        // invalid: the default counts
    bool isResult = false; // a run wrote the value; it is no part of the app before it is kept
    QVariant initial;      // the value before that
    QStringList choices;   // of a Choice or Choices
    bool required = false;
    QVariant least; // of a Number, Date, DateTime or Slider, as its value; invalid: no limit
    QVariant most;
    double step = 0;     // of a Slider; 0: a hundredth of the range
    int lines = 0;       // of Lines: how many are seen at once; 0: usualLines
    int columns = 0;     // of a Group: side by side; 0: one
    QStringList endings; // of a File or Files: those allowed ("xlsx"); empty: any
    QString pattern;     // of a Text or a Password: a regular expression for the whole of it; empty: any
    QString hint;        // shown in the empty field
    QByteArray unknown;  // members written by a newer client, kept as they came

    // The value, else the default, else an empty value of the type.
    QVariant GetEffectiveValue() const;

    // Turns a value into this parameter's type ("3.5" into a number, "2024-02-29" into a date). An invalid
    // value stays invalid (no value). False, with the value left alone, when it does not fit: no number, no
    // date, none of the choices, a text beyond ContentLimits.
    bool Fit(QVariant& value) const;

    // Whether it is of a newer client's type: what that may hold is unknown here.
    bool IsForeign() const { return type == RpaParamType::Text && !foreignType.isEmpty(); }

    // What the user reads: the label, else the name.
    QString GetTitle() const { return label.isEmpty() ? name : label; }

    // Why no run may start with the effective value, in the user's words: nothing is entered where something
    // must be, it is out of range or not of the pattern. Empty when a run may.
    QString GetProblem() const;
    // Whether it is required and nothing is entered; a switch always shows something.
    bool IsMissing() const;

    // Which limits a parameter of this type may have.
    bool TakesRange() const;
    bool TakesPattern() const;
    bool TakesChoices() const { return type == RpaParamType::Choice || type == RpaParamType::Choices; }
    bool TakesEndings() const { return type == RpaParamType::File || type == RpaParamType::Files; }
    // Whether the value is a list of texts.
    bool IsList() const { return type == RpaParamType::Files || type == RpaParamType::Choices; }
    // Whether runs write it for the user to see, and nobody enters anything.
    bool IsOutput() const { return type == RpaParamType::Progress || type == RpaParamType::Picture; }
    // Whether nothing may be entered, so that it can be demanded.
    bool CanBeMissing() const;

    // Bounds of what the author sets; a Lines with 0 shows usualLines.
    static constexpr int usualLines = 4;
    static constexpr int mostLines = 20;
    static constexpr int mostColumns = 2;

    // A value as the user reads it.
    static QString GetText(const QVariant& value);

    // Of everything, the value and the foreign members included.
    bool operator==(const RpaParamItem& other) const;
    bool operator!=(const RpaParamItem& other) const { return !(*this == other); }

    // Stable names ("text", "number", …) and what the user reads ("文本", "数字", …).
    static QString GetTypeName(RpaParamType type);
    static QString GetTypeTitle(RpaParamType type);
    static QVector<RpaParamType> GetTypes();
};
Q_DECLARE_METATYPE(RpaParamItem)

// The parameters of a UI page, in order. A name is never blank, nor that of two. Values that do not fit a
// changed type are dropped. GUI thread only.
class RPAAPPDATA_EXPORT RpaParamData : public RpaRecordList<RpaParamItem>
{
    Q_OBJECT

public:
    explicit RpaParamData(QObject* parent = nullptr);

    // Of those with a value.
    QStringList GetNames() const;
    // -1 when there is none; names are compared exactly.
    int IndexOf(const QString& name) const;
    // A name of the form "参数2" that is free.
    QString MakeFreeName(const QString& stem) const;

    // What the user filled in. False outside the list or when the value does not fit. An invalid value takes
    // it back.
    bool SetValue(int index, const QVariant& value);

    // What a run wrote: like SetValue(), but no part of the JSON, which holds the value of before, until it
    // is kept.
    bool SetResult(int index, const QVariant& value);
    int GetResultCount() const;
    // Makes the values that runs wrote part of the app, or takes them back.
    void KeepResults();
    void RestoreResults();

    // The value in an app; see RpaAppData.
    void WriteJson(JsonWriter& writer) const;
    std::function<void()> ReadJson(JsonReader& reader);

signals:
    // There are other results of runs than before. Taking them back leaves the app as it was: no SigChanged.
    void SigResultsChanged();
    // Only the value of an item changed.
    void SigValueChanged(int index);

protected:
    bool Settle(RpaParamItem& item, int index) const override;
    void SettleAll(Content& all) const override;
    void Replace(const Content& after) override;

private:
    bool Write(int index, const QVariant& value, bool isResult);
};
