// SPDX-License-Identifier: Apache-2.0

#include <WbSystem/CleanEnvironment.h>

#include <algorithm>
#include <iterator>

namespace
{
constexpr const char* removed[] = {"PYTHON", "PY_PYTHON", "VIRTUAL_ENV", "PIP_", "LD_", "QTWEBENGINE_"};

// As the system itself compares names: elsewhere "python_home" is somebody's own variable.
#ifdef Q_OS_WIN
constexpr Qt::CaseSensitivity caseOfNames = Qt::CaseInsensitive;
#else
constexpr Qt::CaseSensitivity caseOfNames = Qt::CaseSensitive;
#endif

bool IsRemoved(const QString& name)
{
    return std::any_of(std::begin(removed), std::end(removed), [&name](const char* start) {
        return name.startsWith(QLatin1String(start), caseOfNames);
    });
}
} // namespace

QProcessEnvironment CleanEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QStringList names = environment.keys();
    for (const QString& name : names)
        if (IsRemoved(name))
            environment.remove(name);
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    return environment;
}
