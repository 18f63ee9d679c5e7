// SPDX-License-Identifier: Apache-2.0

#include <RpaEngineModule/RpaEngineModule.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace
{
// Each public function with its arguments, those with a default marked; what is told by a documentation.
const char comparison[] = R"(
import ast, sys

def functions(path):
    with open(path, encoding="utf-8") as file:
        tree = ast.parse(file.read())
    found = {}
    for node in tree.body:
        if isinstance(node, ast.FunctionDef) and not node.name.startswith("_"):
            names = [argument.arg for argument in node.args.args]
            given = [ast.unparse(value) for value in node.args.defaults]
            found[node.name] = (names, given, ast.get_docstring(node) or "")
    return found

# What the workstation itself calls.
inner = {"connect", "set_processes", "run_process", "unknown_command"}
real, told = functions(sys.argv[1]), functions(sys.argv[2])
for name in sorted(set(real) - inner ^ set(told)):
    print("only in one:", name)
for name in set(real) & set(told):
    if real[name][:2] != told[name][:2]:
        print("differs:", name, real[name][:2], told[name][:2])
    if not any("\u4e00" <= letter <= "\u9fff" for letter in told[name][2]):
        print("says nothing in Chinese:", name)
print("compared" if told else "nothing is told")
)";
} // namespace

// What the program editor shows of the module "rpa" is what programs can call.
class tst_RpaDescription : public QObject
{
    Q_OBJECT

private slots:
    void tellsEveryFunctionAsItIs();
};

void tst_RpaDescription::tellsEveryFunctionAsItIs()
{
    QVERIFY(RpaEngineModule::Instance()); // its library brings the files
    const QTemporaryDir folder;
    const QString real = folder.filePath(QStringLiteral("rpa_api.py"));
    const QString told = folder.filePath(QStringLiteral("rpa.pyi"));
    QVERIFY(QFile::copy(QStringLiteral(":/rpa/runtime/rpa_api.py"), real));
    QVERIFY(QFile::copy(QStringLiteral(":/rpa/runtime/rpa.pyi"), told));

    QProcess python;
    python.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral("-I"), QStringLiteral("-c"), QString::fromUtf8(comparison), real, told});
    QVERIFY(python.waitForFinished());

    QCOMPARE(QString::fromUtf8(python.readAllStandardError()), QString());
    QCOMPARE(QString::fromUtf8(python.readAllStandardOutput()), QStringLiteral("compared\n"));
}

QTEST_GUILESS_MAIN(tst_RpaDescription)

#include "tst_rpadescription.moc"
