// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/JsonGuard.h>
#include <WbFoundation/WbFoundationExport.h>

#include <QByteArray>
#include <QString>

// What can be told of an app's JSON without opening it. Whoever takes content from somewhere else asks here
// before anything is replaced by it: what is no app would open as an empty one, and the next save would make
// that final.
//
// An app is an object of
//   uiData, with pages                 object, array of objects; must be there
//   processData, with processes        object, array of objects; must be there
//   version                            text: the format it was written in
//   extendInfo                         object
//   packageInfo, with packages         object, array of objects
//   htmlNodes, uiaNodes, with nodes    objects, arrays of objects
// and of whatever a newer client adds.
struct WBFOUNDATION_EXPORT AppOutline
{
    // What the text turned out to be.
    enum class Kind
    {
        App,
        NotJson, // breaks the rules of JsonGuard
        Broken,  // a member of an app is of another kind
        Foreign, // JSON, but no object, or one without the parts that every app has
    };

    // Checks by the rules of JsonGuard on the way. One pass, without recursion; any thread.
    static AppOutline Read(const QByteArray& json, const JsonLimits& limits = JsonLimits());

    // Whether it has what an app must have.
    bool IsApp() const { return kind == Kind::App; }

    Kind kind = Kind::App;
    // The member "version"; also of content that is otherwise not understood, as a newer client may write
    // apps of another shape. Empty when there is none.
    QString version;
    // Why it is no app, in Chinese; empty when it is one.
    QString problem;

private:
    void Refuse(Kind why, const QString& text);
};
