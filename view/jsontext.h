#pragma once

#include "kesimagewnd_export.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QSet>

// Reads the JSON texts hosts hand the window (the reticles' settings) the way
// QJsonDocument::fromJson reads them: the same documents, the same failures,
// and of a key an object holds more than once the last value wins. It differs
// in one thing: Qt 5.15's parser never frees the earlier value of a repeated key
// when that value is an array or an object, so a host that sends such a text
// on every frame would lose memory on every frame. Before Qt parses, each
// earlier occurrence of a repeated key is renamed to a stand-in no other key of
// the text uses; the stand-ins are taken out of the parsed document again.
class KESIMAGEWND_TESTS_EXPORT JsonText
{
public:
    // The document of utf8, as QJsonDocument::fromJson(utf8) gives it; a null
    // document where Qt reports an error.
    static QJsonDocument parse(const QByteArray& utf8);

    // utf8 with every earlier occurrence of a repeated key renamed, and the
    // stand-in names in *standIns. A text whose strings or brackets stop making
    // sense is renamed up to that point only: Qt's parser fails there or before,
    // and a renamed key is still a valid string, so the verdict stays Qt's.
    static QByteArray renameRepeatedKeys(const QByteArray& utf8, QSet<QString>* standIns);
};
