// SPDX-License-Identifier: Apache-2.0

#include "ProblemRules.h"

using namespace ProblemRules;
using namespace ProblemSamples;

// Links of the instructions.
class LinkProblemsTest : public QObject
{
    Q_OBJECT

private slots:
    void links_data();
    void links() { Compare(); }
};

void LinkProblemsTest::links_data()
{
    AddColumns();
    Row("no link", WithManual("<p>说明 href=\"\"</p>"), "");
    Row("good", WithManual("<a href=\"https://example.com/a?b=1&amp;c=2\">甲</a>"), "");
    Row("Chinese letters", WithManual("<a href=\"https://example.com/说明 1.html\">甲</a>"), "");
    Row("mail", WithManual("<a href='mailto:a@example.com'>甲</a>"), "");
    Row("place in the text", WithManual("<a href=\"#top\">甲</a>"), "");
    Row("empty", WithManual("<p><a style=\"x\" href=\"\"><b>甲</b></a></p>"), "dead-link");
    Row("only a sign", WithManual("<a href=\"#\">甲</a>"), "dead-link");
    Row("no host", WithManual("<A HREF=\"http://\">甲</A>"), "dead-link");
    Row("no scheme", WithManual("<a href=\"www.example.com\">甲</a>"), "dead-link");
    Row("malformed", WithManual("<a href=\"http://[1\">甲</a>"), "dead-link");
    Row("two", WithManual("<a href=\"\">甲</a><a href=\"\">乙</a>"), "dead-link dead-link");
    Row("one of two", WithManual("<a href=\"https://example.com\">甲</a> <a href=\"\">乙</a>"), "dead-link");
}

QTEST_GUILESS_MAIN(LinkProblemsTest)
#include "tst_linkproblems.moc"
