// SPDX-License-Identifier: GPL-3.0-or-later
#include "Catalogue.h"

#include <QFile>
#include <QXmlStreamReader>

namespace test
{
namespace
{
Catalogue::Translation readTranslation(QXmlStreamReader &xml)
{
    Catalogue::Translation translation;
    translation.isFinished = xml.attributes().value("type").isEmpty();
    QString text;
    while (!xml.atEnd() && xml.readNext() != QXmlStreamReader::EndElement) {
        if (xml.isStartElement()) // of a plural
            translation.forms += xml.readElementText();
        else
            text += xml.text();
    }
    if (translation.forms.isEmpty())
        translation.forms += text;
    return translation;
}

void readMessage(QXmlStreamReader &xml, const QString &context, Catalogue &catalogue)
{
    Catalogue::Text text{context, {}, {}};
    Catalogue::Translation translation;
    while (xml.readNextStartElement()) {
        if (xml.name() == "source")
            text.source = xml.readElementText();
        else if (xml.name() == "comment")
            text.comment = xml.readElementText();
        else if (xml.name() == "translation")
            translation = readTranslation(xml);
        else
            xml.skipCurrentElement();
    }
    catalogue.texts.insert(text, translation);
}
} // namespace

Catalogue Catalogue::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    Catalogue catalogue;
    QXmlStreamReader xml(&file);
    QString context;
    xml.readNextStartElement();          // TS
    while (xml.readNextStartElement()) { // context
        while (xml.readNextStartElement()) {
            if (xml.name() == "name")
                context = xml.readElementText();
            else
                readMessage(xml, context, catalogue);
        }
    }
    return xml.hasError() ? Catalogue() : catalogue;
}
} // namespace test
