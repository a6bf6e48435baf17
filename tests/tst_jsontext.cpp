#include "jsontext.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QtTest>

// The window's reader of host JSON texts: the documents and failures of Qt's
// own parser, last value winning for a repeated key, without handing Qt's
// parser a repeated key (whose earlier array or object value Qt 5.15 never
// frees; the sanitizer build reports that as a leak).
class tst_JsonText : public QObject
{
    Q_OBJECT

private slots:
    void textsWithoutRepeatedKeysReadAsQtReadsThem_data();
    void textsWithoutRepeatedKeysReadAsQtReadsThem();
    void repeatedKeyTakesItsLastValueAtEveryDepth_data();
    void repeatedKeyTakesItsLastValueAtEveryDepth();
    void textsQtRefusesStayRefused_data();
    void textsQtRefusesStayRefused();
    void earlierOccurrencesGetStandInsNoOtherKeyUses();
    void repeatedScalarKeysReadAsQtReadsThem_data();
    void repeatedScalarKeysReadAsQtReadsThem();
};

namespace {

QString compact(const QJsonDocument& document)
{
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact));
}

} // namespace

void tst_JsonText::textsWithoutRepeatedKeysReadAsQtReadsThem_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty object") << QByteArray("{}");
    QTest::newRow("reticle text") << QByteArray("{\"visible\":true,\"gap\":12,\"color\":\"255,0,0,255\"}");
    QTest::newRow("nested") << QByteArray(" { \"a\" : [ {\"b\":1}, {\"b\":2} ], \"c\" : {\"b\":[3]} } ");
    QTest::newRow("same key in sibling objects") << QByteArray("[{\"b\":[2]},{\"b\":3}]");
    QTest::newRow("value equal to a key") << QByteArray("{\"a\":\"a\",\"b\":\"a\"}");
    QTest::newRow("escaped quote in key") << QByteArray("{\"a\\\"\":[1],\"a\":2}");
    QTest::newRow("keys differing by escape only in look") << QByteArray("{\"\\/\":[1],\"\\\\\":2}");
    QTest::newRow("non-ASCII keys") << QString("{\"\u00e9\":[1],\"e\":2}").toUtf8();
}

void tst_JsonText::textsWithoutRepeatedKeysReadAsQtReadsThem()
{
    QFETCH(QByteArray, text);
    QSet<QString> standIns;
    QCOMPARE(JsonText::renameRepeatedKeys(text, &standIns), text);
    QVERIFY(standIns.isEmpty());
    const QJsonDocument expected = QJsonDocument::fromJson(text);
    QVERIFY(!expected.isNull());
    QCOMPARE(compact(JsonText::parse(text)), compact(expected));
}

void tst_JsonText::repeatedKeyTakesItsLastValueAtEveryDepth_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("array then number") << QByteArray("{\"b\":[2],\"b\":3}") << "{\"b\":3}";
    QTest::newRow("array then array") << QByteArray("{\"b\":[2],\"b\":[3]}") << "{\"b\":[3]}";
    QTest::newRow("three times") << QByteArray("{\"b\":[2],\"b\":3,\"b\":{\"c\":4}}") << "{\"b\":{\"c\":4}}";
    QTest::newRow("other keys between") << QByteArray("{\"a\":{\"x\":1},\"c\":0,\"a\":5}") << "{\"a\":5,\"c\":0}";
    QTest::newRow("escaped spelling of the same key")
        << QByteArray("{\"b\":[2],\"\\u0062\":3}") << "{\"b\":3}";
    QTest::newRow("inside an array") << QByteArray("[[{\"b\":[2],\"b\":3}]]") << "[[{\"b\":3}]]";
    QTest::newRow("inside a nested object")
        << QByteArray("{\"a\":{\"b\":{\"d\":[1]},\"b\":3},\"a2\":1}") << "{\"a\":{\"b\":3},\"a2\":1}";
    QTest::newRow("repeated at two depths")
        << QByteArray("{\"gap\":[1,2],\"gap\":{\"a\":[3],\"a\":4},\"visible\":{\"c\":1},\"visible\":true}")
        << "{\"gap\":{\"a\":4},\"visible\":true}";
    QTest::newRow("a host key that looks like a stand-in")
        << QByteArray("{\"\\u00010\":7,\"b\":[2],\"b\":3}") << QString("{\"\\u00010\":7,\"b\":3}");
}

void tst_JsonText::repeatedKeyTakesItsLastValueAtEveryDepth()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, expected);
    QCOMPARE(compact(JsonText::parse(text)), expected);
}

void tst_JsonText::textsQtRefusesStayRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("garbage after a repeated key's object") << QByteArray("{\"x\":{\"b\":[2],\"b\":3} x");
    QTest::newRow("unclosed object") << QByteArray("{\"b\":[2],\"b\":3");
    QTest::newRow("trailing comma") << QByteArray("{\"b\":[2],\"b\":3,}");
    QTest::newRow("short unicode escape in the earlier key") << QByteArray("{\"b\\u12\":[2],\"b\\u12\":3}");
    QTest::newRow("mismatched bracket") << QByteArray("{\"b\":[2},\"b\":3}");
    QTest::newRow("unterminated string") << QByteArray("{\"b\":[2],\"b");
    QTest::newRow("missing colon") << QByteArray("{\"b\" [2],\"b\":3}");
}

void tst_JsonText::textsQtRefusesStayRefused()
{
    QFETCH(QByteArray, text);
    QVERIFY(JsonText::parse(text).isNull());
}

void tst_JsonText::earlierOccurrencesGetStandInsNoOtherKeyUses()
{
    QSet<QString> standIns;
    const QByteArray text("{\"\\u00010\":1,\"b\":[2],\"b\":{\"b\":[3],\"b\":4}}");
    const QByteArray renamed = JsonText::renameRepeatedKeys(text, &standIns);
    QCOMPARE(renamed, QByteArray("{\"\\u00010\":1,\"\\u00011\":[2],\"b\":{\"\\u00012\":[3],\"b\":4}}"));
    QCOMPARE(standIns, (QSet<QString>{QString(QChar(1)) + "1", QString(QChar(1)) + "2"}));
}

void tst_JsonText::repeatedScalarKeysReadAsQtReadsThem_data()
{
    // Qt frees a replaced number or string, so its own parse is the reference.
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("numbers") << QByteArray("{\"gap\":5,\"gap\":1}");
    QTest::newRow("string then number") << QByteArray("{\"b\":\"x\",\"b\":3}");
    QTest::newRow("empty object then number") << QByteArray("{\"b\":{},\"b\":3}");
    QTest::newRow("interleaved") << QByteArray("{\"a\":1,\"b\":2,\"a\":3}");
    // Qt reads an unknown escape as the letter and a raw control character as
    // itself; the keys are compared as Qt reads them.
    QTest::newRow("unknown escape") << QByteArray("{\"b\\q\":2,\"bq\":3}");
    QTest::newRow("raw control character") << QByteArray("{\"b\x01\":2,\"b\\u0001\":3}");
    QTest::newRow("lone surrogate") << QByteArray("{\"\\ud800\":2,\"\\ud800\":3}");
}

void tst_JsonText::repeatedScalarKeysReadAsQtReadsThem()
{
    QFETCH(QByteArray, text);
    QSet<QString> standIns;
    JsonText::renameRepeatedKeys(text, &standIns);
    QCOMPARE(standIns.size(), 1);
    QCOMPARE(compact(JsonText::parse(text)), compact(QJsonDocument::fromJson(text)));
}

QTEST_APPLESS_MAIN(tst_JsonText)
#include "tst_jsontext.moc"
