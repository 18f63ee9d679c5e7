// SPDX-License-Identifier: Apache-2.0

#include "ProblemRules.h"

using namespace ProblemRules;
using namespace ProblemSamples;

// Imports of programs and the list of packages.
class PackageProblemsTest : public QObject
{
    Q_OBJECT

private slots:
    void packages_data();
    void packages() { Compare(); }
    void fixes_data();
    void fixes() { CompareFix(); }
    void idsStayWhenOtherThingsChange();
    void idsDifferWithTheSubject();
    void saysWhereAnImportStands();
};

void PackageProblemsTest::packages_data()
{
    AddColumns();
    Row("imported and not listed", Program("import requests"), "unlisted-package");
    Row("imported twice", Program("import requests\nfrom requests import get"), "unlisted-package");
    Row("imported and listed", WithPackage(Program("import requests"), "Requests"), "");
    Row("of another name", WithPackage(Program("from PIL import Image"), "pillow"), "");
    Row("several in a line", Program("import os, numpy as np, pandas"), "unlisted-package unlisted-package");
    Row("in a block", Program("try: import numpy\nexcept ImportError: pass"), "unlisted-package");
    Row("of every Python", Program("import os\nfrom urllib.request import urlopen\nimport rpa"), "");
    Row("its own", Program("from .helper import x\nfrom . import y"), "");
    Row("in a text", Program("'''\nimport numpy\n'''\nx = \"import numpy\"  # import numpy"), "");
    Row("in a text with a sign", Program("x = '\\' import numpy'\ny = 'it\\'s'"), "");
    Row("in a text over two lines", Program("x = 'a\\\nimport numpy'"), "");
    Row("behind a text that is not closed", Program("x = 'abc\nimport numpy"), "unlisted-package");
    Row("a word that begins so", Program("important = 1\nfrom_ = 2"), "");
    Row("listed and never imported", WithPackage(Program("x = 1"), "numpy"), "unused-package?");
    Row("spelled another way", WithPackage(Program("import docx"), "Python_Docx"), "");
    Row("needed by a step", WithPackage(Main({Step("excel.create", {}, QStringLiteral("_b"))}), "openpyxl"),
        "");
    Row("not listed yet, but a save does so", Main({Step("excel.create", {}, QStringLiteral("_b"))}), "");
    Row("needed by no step", WithPackage(Main({}), "openpyxl"), "unused-package?");
}

void PackageProblemsTest::fixes_data()
{
    AddFixColumns();
    FixRow("list a package", Program("import cv2"), RpaProblemFix::ListPackage, "opencv-python");
    FixRow("a package that nobody knows", Program("import zzz"), RpaProblemFix::None, "zzz");
    FixRow("take a package out", WithPackage(Main({}), "numpy"), RpaProblemFix::UnlistPackage, "numpy");
    FixRow("a package that may bring anything", WithPackage(Main({}), "zzz"), RpaProblemFix::None, "zzz");
}

void PackageProblemsTest::idsStayWhenOtherThingsChange()
{
    const QString id = First(Program("import numpy")).id;

    QVERIFY(id.startsWith(QLatin1String("unlisted-package-")));
    QCOMPARE(First(Program("x = 1\n\nimport numpy")).id, id);
}

void PackageProblemsTest::idsDifferWithTheSubject()
{
    const QVector<RpaProblem> problems = RpaProblemFinder::Find(Program("import numpy\nimport pandas"));

    QCOMPARE(problems.size(), 2);
    QVERIFY(problems.at(0).id != problems.at(1).id);
}

void PackageProblemsTest::saysWhereAnImportStands()
{
    const RpaProblem problem = First(Program("'''\na\n'''\nx = 'a\\\nb'\nimport numpy"));

    QCOMPARE(problem.place.line, 6);
    QVERIFY(problem.place.area == RpaProblemArea::Program);
}

QTEST_GUILESS_MAIN(PackageProblemsTest)
#include "tst_packageproblems.moc"
