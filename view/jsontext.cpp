#include "jsontext.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonParseError>
#include <QJsonValue>
#include <QPair>
#include <QSet>
#include <QVector>

#include <algorithm>

namespace {

// Where a token lies in the text: [begin, end).
using Span = QPair<int, int>;

// One open bracket of the text. In an object, expectKey says whether the next
// string is a key (right after "{" or ","), and keys holds where each key was
// last seen.
struct Frame
{
    bool isObject = false;
    bool expectKey = false;
    QHash<QString, Span> keys;
};

// The stand-in names start with a control character, which no reticle key
// holds; the number makes each one its own.
const QChar kStandInMark(0x0001);
const char kStandInMarkEscaped[] = "\\u0001";

bool isJsonSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// The text of a string token as Qt's parser reads it. Tokens of printable
// ASCII without escapes read as they stand; any other goes through Qt itself,
// so that escapes, surrogates and bytes Qt refuses are judged as Qt judges
// them. False where Qt refuses the token.
bool decodeString(const QByteArray& token, QString* text)
{
    bool plain = true;
    for (int i = 1; i + 1 < token.size() && plain; ++i) {
        const uchar c = uchar(token.at(i));
        plain = c >= 0x20 && c < 0x7f && c != '\\';
    }
    if (plain) {
        *text = QString::fromLatin1(token.constData() + 1, token.size() - 2);
        return true;
    }
    QJsonParseError error;
    const QJsonDocument wrapped = QJsonDocument::fromJson("[" + token + "]", &error);
    if (error.error != QJsonParseError::NoError)
        return false;
    *text = wrapped.array().at(0).toString();
    return true;
}

QJsonValue withoutStandIns(const QJsonValue& value, const QSet<QString>& standIns)
{
    if (value.isObject()) {
        QJsonObject object = value.toObject();
        for (const QString& name : standIns)
            object.remove(name);
        for (auto it = object.begin(); it != object.end(); ++it) {
            if (it.value().isObject() || it.value().isArray())
                it.value() = withoutStandIns(it.value(), standIns);
        }
        return object;
    }
    if (value.isArray()) {
        QJsonArray array = value.toArray();
        for (int i = 0; i < array.size(); ++i) {
            if (array.at(i).isObject() || array.at(i).isArray())
                array[i] = withoutStandIns(array.at(i), standIns);
        }
        return array;
    }
    return value;
}

} // namespace

QByteArray JsonText::renameRepeatedKeys(const QByteArray& utf8, QSet<QString>* standIns)
{
    standIns->clear();
    QVector<Frame> frames;
    QVector<Span> earlierKeys;
    QSet<QString> allKeys;
    const int size = utf8.size();
    int i = 0;
    bool readable = true;
    while (i < size && readable) {
        const char c = utf8.at(i);
        if (c == '{' || c == '[') {
            Frame frame;
            frame.isObject = c == '{';
            frame.expectKey = frame.isObject;
            frames.append(frame);
            ++i;
        } else if (c == '}' || c == ']') {
            readable = !frames.isEmpty() && frames.last().isObject == (c == '}');
            if (readable)
                frames.removeLast();
            ++i;
        } else if (c == ',') {
            if (!frames.isEmpty() && frames.last().isObject)
                frames.last().expectKey = true;
            ++i;
        } else if (c == '"') {
            const int begin = i++;
            while (i < size && utf8.at(i) != '"')
                i += utf8.at(i) == '\\' ? 2 : 1;
            if (i >= size) {
                readable = false;
                break;
            }
            ++i;
            if (frames.isEmpty() || !frames.last().isObject || !frames.last().expectKey)
                continue;
            Frame& object = frames.last();
            object.expectKey = false;
            QString key;
            readable = decodeString(utf8.mid(begin, i - begin), &key);
            if (!readable)
                break;
            allKeys.insert(key);
            const Span span(begin, i);
            auto seen = object.keys.find(key);
            if (seen == object.keys.end()) {
                object.keys.insert(key, span);
            } else {
                earlierKeys.append(seen.value());
                seen.value() = span;
            }
        } else {
            if (!isJsonSpace(c) && !frames.isEmpty())
                frames.last().expectKey = false;
            ++i;
        }
    }
    if (earlierKeys.isEmpty())
        return utf8;

    std::sort(earlierKeys.begin(), earlierKeys.end());
    QByteArray renamed;
    renamed.reserve(utf8.size() + earlierKeys.size() * 16);
    int copiedTo = 0;
    int number = 0;
    for (const Span& span : earlierKeys) {
        QString name;
        do {
            name = kStandInMark + QString::number(number++);
        } while (allKeys.contains(name));
        standIns->insert(name);
        renamed.append(utf8.constData() + copiedTo, span.first - copiedTo);
        renamed.append('"').append(kStandInMarkEscaped).append(QByteArray::number(number - 1)).append('"');
        copiedTo = span.second;
    }
    renamed.append(utf8.constData() + copiedTo, size - copiedTo);
    return renamed;
}

QJsonDocument JsonText::parse(const QByteArray& utf8)
{
    QSet<QString> standIns;
    const QByteArray text = renameRepeatedKeys(utf8, &standIns);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError || standIns.isEmpty())
        return document;
    if (document.isObject())
        return QJsonDocument(withoutStandIns(document.object(), standIns).toObject());
    return QJsonDocument(withoutStandIns(document.array(), standIns).toArray());
}
