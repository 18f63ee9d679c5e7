// SPDX-License-Identifier: Apache-2.0

#include "BrowserProcess.h"
#include "TestApp.h"

#include <RpaEngineCore/IAppParamEngine.h>

namespace
{
// A page with one password parameter, as a running process sees it.
class PasswordParam : public IAppParamEngine
{
public:
    PasswordParam() { RpaEngineModule::Instance()->SetAppParamEngine(this); }
    ~PasswordParam() override { RpaEngineModule::Instance()->SetAppParamEngine(nullptr); }

    QStringList GetParamNames() const override { return {QStringLiteral("用户"), QStringLiteral("口令")}; }
    QStringList GetSecretParamNames() const override { return {QStringLiteral("口令")}; }
    QVariant GetParam(const QString& name) const override
    {
        return name == QStringLiteral("口令") ? QStringLiteral("s3cret") : QStringLiteral("zhang");
    }
    bool SetParam(const QString&, const QVariant&) override { return false; }
};

QByteArray Body(const char* html)
{
    return QByteArrayLiteral("<html><meta charset=\"utf-8\"><body>") + html +
           QByteArrayLiteral("</body></html>");
}

// What every field of the page holds now, in order.
const QString fieldValues =
    QStringLiteral("Array.from(document.querySelectorAll('input,textarea'))"
                   ".map(e => e.type === 'radio' ? String(e.checked) : e.value).join('|')");
} // namespace

class ElementBeliefTest : public QObject
{
    Q_OBJECT

private slots:
    void actsOnlyOnWhatStillIsTheCapturedElement_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QString>("target");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QString>("act");
        QTest::addColumn<QString>("said");
        QTest::addColumn<QString>("values");

        const QString changed = QStringLiteral("网页已改变：元素“");
        const QString type = QStringLiteral("rpa.browser_input('%1', '填的', 0.2)\n");
        const QString click = QStringLiteral("rpa.browser_click('%1', 0.2)\n");
        QTest::newRow("a field above a password field")
            << Body("<form><input name='u'><input type='password'></form>") << "input[type=password]"
            << Body("<form><input name='new'><input name='u'><input type='password'></form>") << type
            << changed << "||";
        QTest::newRow("a field of the same type above")
            << Body("<form><label>姓名 <input></label></form>") << "input"
            << Body("<form><label>公司 <input></label><label>姓名 <input></label></form>") << type << changed
            << "|";
        QTest::newRow("another element in the place of a button")
            << Body("<div><input><button>保存</button></div>") << "button"
            << Body("<div><input><button "
                    "onclick=\"document.querySelector('input').value='删'\">删除</button></div>")
            << click << changed << "";
        QTest::newRow("another choice of the same question")
            << Body("<p><input type='radio' name='q' value='yes'></p>") << "input"
            << Body("<p><input type='radio' name='q' value='no'></p>") << click << changed << "false";
        QTest::newRow("a hidden password") << Body("<input type='password' name='p'>") << "input"
                                           << Body("<input type='text' name='p'>") << type << changed << "";
        QTest::newRow("two of the same name")
            << Body("<input name='n'>") << "input" << Body("<input name='n'><input name='n'>") << type
            << QStringLiteral("网页上有多个元素与“") << "|";
        QTest::newRow("it is gone") << Body("<input name='n'>") << "input" << Body("<textarea></textarea>")
                                    << type << QStringLiteral("网页上找不到元素“") << "";
        QTest::newRow("another id, the same label")
            << Body("<label>姓名 <input id='first'></label>") << "input"
            << Body("<label>姓名 <input id='second'></label>") << type << QString() << "填的";
        QTest::newRow("another place, the same name")
            << Body("<input name='n'>") << "input" << Body("<input name='m'><div><input name='n'></div>")
            << type << QString() << "|填的";
        QTest::newRow("no type at all and the type text")
            << Body("<input name='n'>") << "input" << Body("<input name='n' type='TEXT'>") << type
            << QString() << "填的";
    }
    void actsOnlyOnWhatStillIsTheCapturedElement()
    {
        QFETCH(QByteArray, before);
        QFETCH(QString, target);
        QFETCH(QByteArray, after);
        QFETCH(QString, act);
        QFETCH(QString, said);
        QFETCH(QString, values);
        CaptureFixture author;
        author.server.Put(QStringLiteral("/page"), before);
        QVERIFY(author.Open(QStringLiteral("/page")));
        const RpaNode node = author.Capture(target);
        QVERIFY(!node.id.isEmpty());
        author.server.Put(QStringLiteral("/page"), after);
        QVERIFY(author.Open(QStringLiteral("/page")));
        BrowserProcess process(author);

        const QString log = process.RunText(act.arg(node.id)).join(QLatin1Char('\n'));

        QVERIFY2(said.isEmpty() ? !log.contains(QStringLiteral("元素“")) : log.contains(said + node.name),
                 qPrintable(log));
        QCOMPARE(author.Run(fieldValues).toString(), values);
    }

    void readsACellWhoseTextIsNew()
    {
        CaptureFixture author;
        author.server.Put(QStringLiteral("/page"),
                          Body("<table><tr><td>合计</td><td>12.50</td></tr></table>"));
        QVERIFY(author.Open(QStringLiteral("/page")));
        const QString cell = author.Capture(QStringLiteral("td + td")).id;
        author.server.Put(QStringLiteral("/page"),
                          Body("<table><tr><td>合计</td><td>13.00</td></tr></table>"));
        QVERIFY(author.Open(QStringLiteral("/page")));
        BrowserProcess process(author);

        const QStringList log =
            process.RunText(QStringLiteral("print(rpa.browser_read('%1', 0.2))\n").arg(cell));

        QVERIFY2(log.contains(QStringLiteral("13.00")), qPrintable(log.join(QLatin1Char('\n'))));
    }

    void typesAPasswordOnlyIntoAPasswordField()
    {
        CaptureFixture author;
        author.server.Put(QStringLiteral("/page"), Body("<input name='u'><input name='p' type='password'>"));
        QVERIFY(author.Open(QStringLiteral("/page")));
        const RpaNode user = author.Capture(QStringLiteral("[name=u]"));
        const RpaNode password = author.Capture(QStringLiteral("[name=p]"));
        BrowserProcess process(author);
        const PasswordParam page;

        const QString log = process
                                .RunText(QStringLiteral("rpa.browser_input('%2', rpa.get_param('口令'))\n"
                                                        "rpa.browser_input('%1', rpa.get_param('用户'))\n"
                                                        "rpa.browser_input('%1', rpa.get_param('口令'))\n")
                                             .arg(user.id, password.id))
                                .join(QLatin1Char('\n'));

        QVERIFY2(log.contains(QStringLiteral("密码只能填写到密码框中，“%1”不是密码框").arg(user.name)),
                 qPrintable(log));
        QCOMPARE(author.Run(fieldValues).toString(), QStringLiteral("zhang|s3cret"));
    }
};

RPA_TEST_MAIN(ElementBeliefTest)
#include "tst_elementbelief.moc"
