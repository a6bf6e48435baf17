#include "kitholders.h"

#include <QtTest/QtTest>

#include "VorFont.h"
#include "VorVar.h"

#include <cstddef>
#include <cstring>
#include <limits>

using namespace Kit;

class TestVorVarFont : public QObject
{
    Q_OBJECT

private slots:
    void typeCodes();
    void emptyVariantHasNoTextAndNoNumber();
    void textKeepsItsBytes_data();
    void textKeepsItsBytes();
    void nullTextIsEmptyText();
    void integerVariant();
    void realVariant();
    void realVariantTruncatesToInteger_data();
    void realVariantTruncatesToInteger();
    void copyKeepsTextAndType();
    void assignmentReplacesContent();
    void selfAssignmentKeepsText();
    void textOutlivesTheSourceBuffer();

    void defaultFont();
    void fontWithFamilyAndSize();
    void fontFamilyWithHighBytes();
    void fontCopyConstructorKeepsEveryField();
    void fontAssignmentKeepsEveryField();
    void fontFieldOrder();
};

void TestVorVarFont::typeCodes()
{
    Kit::verifyCodesCountUp(0, {VorVar::VT_EMPTY, VorVar::VT_INT, VorVar::VT_DOUBLE, VorVar::VT_TEXT});

    QCOMPARE(VorVar().ValType(), 0);
    QCOMPARE(VorVar(5).ValType(), 1);
    QCOMPARE(VorVar(2.5).ValType(), 2);
    QCOMPARE(VorVar("abc").ValType(), 3);
}

void TestVorVarFont::emptyVariantHasNoTextAndNoNumber()
{
    const VorVar v;
    QVERIFY(v.S() != nullptr);
    QCOMPARE(std::strlen(v.S()), std::size_t(0));
    QCOMPARE(v.I(), 0);
    QCOMPARE(v.D(), 0.0);
}

void TestVorVarFont::textKeepsItsBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("ascii") << QByteArray("Result OK");
    QTest::newRow("gbk two characters") << QByteArray("\xC4\xE3\xBA\xC3");
    QTest::newRow("utf-8 one character") << QByteArray("\xE4\xBD\xA0");
    QTest::newRow("mixed") << QByteArray("x=\xE4\xBD\xA0 \xFF\x80\x01");
    QTest::newRow("empty") << QByteArray("");
}

void TestVorVarFont::textKeepsItsBytes()
{
    QFETCH(QByteArray, bytes);

    const VorVar v(bytes.constData());
    QCOMPARE(v.ValType(), int(VorVar::VT_TEXT));
    QCOMPARE(QByteArray(v.S()), bytes);
    QCOMPARE(std::strlen(v.S()), std::size_t(bytes.size()));
    QCOMPARE(v.I(), 0);
    QCOMPARE(v.D(), 0.0);
}

void TestVorVarFont::nullTextIsEmptyText()
{
    const VorVar v(static_cast<const char*>(nullptr));
    QCOMPARE(v.ValType(), int(VorVar::VT_TEXT));
    QVERIFY(v.S() != nullptr);
    QCOMPARE(QByteArray(v.S()), QByteArray());
}

void TestVorVarFont::integerVariant()
{
    const VorVar v(-42);
    QCOMPARE(v.I(), -42);
    QCOMPARE(v.D(), -42.0);
    QCOMPARE(QByteArray(v.S()), QByteArray());

    const VorVar big(2147483647);
    QCOMPARE(big.I(), 2147483647);
}

void TestVorVarFont::realVariant()
{
    const VorVar v(3.75);
    QCOMPARE(v.D(), 3.75);
    QCOMPARE(v.I(), 3);
    QCOMPARE(QByteArray(v.S()), QByteArray());
}

void TestVorVarFont::realVariantTruncatesToInteger_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("expected");

    QTest::newRow("positive fraction") << 9.99 << 9;
    QTest::newRow("negative fraction") << -9.99 << -9;
    QTest::newRow("too large") << 1e12 << 2147483647;
    QTest::newRow("too small") << -1e12 << (-2147483647 - 1);
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << 0;
}

void TestVorVarFont::realVariantTruncatesToInteger()
{
    QFETCH(double, value);
    QFETCH(int, expected);
    QCOMPARE(VorVar(value).I(), expected);
}

void TestVorVarFont::copyKeepsTextAndType()
{
    const VorVar a("\xC4\xE3\xBA\xC3");
    const VorVar b(a);
    QCOMPARE(b.ValType(), 3);
    QCOMPARE(QByteArray(b.S()), QByteArray("\xC4\xE3\xBA\xC3"));
    QVERIFY(b.S() != a.S());

    const VorVar n(17);
    const VorVar m(n);
    QCOMPARE(m.ValType(), 1);
    QCOMPARE(m.I(), 17);
}

void TestVorVarFont::assignmentReplacesContent()
{
    VorVar v("first");
    v = VorVar(8);
    QCOMPARE(v.ValType(), 1);
    QCOMPARE(v.I(), 8);
    QCOMPARE(QByteArray(v.S()), QByteArray());

    v = VorVar("\xE4\xBD\xA0");
    QCOMPARE(v.ValType(), 3);
    QCOMPARE(v.I(), 0);
    QCOMPARE(QByteArray(v.S()), QByteArray("\xE4\xBD\xA0"));

    v = VorVar();
    QCOMPARE(v.ValType(), 0);
    QCOMPARE(QByteArray(v.S()), QByteArray());
}

void TestVorVarFont::selfAssignmentKeepsText()
{
    VorVar v("keep me");
    const VorVar& same = v;
    v = same;
    QCOMPARE(v.ValType(), 3);
    QCOMPARE(QByteArray(v.S()), QByteArray("keep me"));
}

void TestVorVarFont::textOutlivesTheSourceBuffer()
{
    char buffer[16];
    std::strcpy(buffer, "transient");
    const VorVar v(buffer);
    std::memset(buffer, 'x', sizeof(buffer) - 1);
    buffer[sizeof(buffer) - 1] = '\0';
    QCOMPARE(QByteArray(v.S()), QByteArray("transient"));
}

void TestVorVarFont::defaultFont()
{
    const VorFont f;
    QCOMPARE(QByteArray(f.S()), QByteArray());
    QCOMPARE(f.size, 12);
    QCOMPARE(f.weight, 50);
    QCOMPARE(int(f.bold), 0);
    QCOMPARE(int(f.italic), 0);
    QCOMPARE(int(f.underline), 0);
    QCOMPARE(int(f.strikeOut), 0);
}

void TestVorVarFont::fontWithFamilyAndSize()
{
    const VorFont f("Sans", 20);
    QCOMPARE(QByteArray(f.S()), QByteArray("Sans"));
    QCOMPARE(f.ValType(), int(VorVar::VT_TEXT));
    QCOMPARE(f.size, 20);
    QCOMPARE(f.weight, 50);

    const VorFont g("Serif");
    QCOMPARE(g.size, 12);

    const VorFont h(nullptr, 9);
    QCOMPARE(QByteArray(h.S()), QByteArray());
    QCOMPARE(h.size, 9);
}

void TestVorVarFont::fontFamilyWithHighBytes()
{
    const VorFont f("\xCB\xCE\xCC\xE5", 14);
    QCOMPARE(QByteArray(f.S()), QByteArray("\xCB\xCE\xCC\xE5"));
}

void TestVorVarFont::fontCopyConstructorKeepsEveryField()
{
    const VorFont f = fontOf("Mono", 31, 75, 1, 1, 1, 1);
    const VorFont c(f);
    QCOMPARE(fieldsOf(c), QByteArray("Mono 31 75 1 1 1 1"));

    VorFont partial("Mono", 8);
    partial.italic = 1;
    const VorFont d(partial);
    QCOMPARE(fieldsOf(d), QByteArray("Mono 8 50 0 1 0 0"));
}

void TestVorVarFont::fontAssignmentKeepsEveryField()
{
    const VorFont f = fontOf("\xE4\xBD\xA0", 18, 25, 0, 1, 0, 1);
    VorFont a("Other", 40);
    a.bold = 1;
    a = f;
    QCOMPARE(fieldsOf(a), QByteArray("\xE4\xBD\xA0 18 25 0 1 0 1"));

    const VorFont& same = a;
    a = same;
    QCOMPARE(fieldsOf(a), QByteArray("\xE4\xBD\xA0 18 25 0 1 0 1"));
}

void TestVorVarFont::fontFieldOrder()
{
    // The fields follow the family name in declaration order.
    const VorFont f;
    const char* base = reinterpret_cast<const char*>(&f);
    const auto at = [base](const void* field) {
        return static_cast<const char*>(field) - base;
    };
    QVERIFY(at(&f.size) >= static_cast<std::ptrdiff_t>(sizeof(VorVar)));
    QVERIFY(at(&f.weight) > at(&f.size));
    QVERIFY(at(&f.bold) > at(&f.weight));
    QCOMPARE(at(&f.italic), at(&f.bold) + 1);
    QCOMPARE(at(&f.underline), at(&f.bold) + 2);
    QCOMPARE(at(&f.strikeOut), at(&f.bold) + 3);
}

QTEST_APPLESS_MAIN(TestVorVarFont)
#include "tst_vorvarfont.moc"
