#include "app/PropertyList.h"

#include <QByteArray>
#include <QDateTime>
#include <QTimeZone>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <utility>

namespace veltrano {

namespace {

/// Reads one list. After a failure the stream has an error.
class ListReader final {
public:
    explicit ListReader(std::string_view xml)
        : m_xml(QByteArray(xml.data(), static_cast<qsizetype>(xml.size()))) {}

    std::shared_ptr<PropertyDictionary> read() {
        PropertyValue root;
        if (m_xml.readNextStartElement() && m_xml.name() == QLatin1String("plist") &&
            m_xml.readNextStartElement())
            root = readValue(0);
        else
            fail();
        if (m_xml.readNextStartElement())
            fail(); // A list has one root.
        while (!m_xml.atEnd())
            m_xml.readNext();
        auto* const dictionary = std::get_if<std::shared_ptr<PropertyDictionary>>(&root);
        return m_xml.hasError() || dictionary == nullptr ? nullptr : *dictionary;
    }

private:
    void fail() { m_xml.raiseError(QStringLiteral("no property list")); }

    /// From the start of an element to behind its end.
    PropertyValue readValue(int level) {
        if (level > kMostPropertyLevels) {
            fail();
            return {};
        }
        const QString kind = m_xml.name().toString();
        if (kind == QLatin1String("dict"))
            return readDictionary(level);
        if (kind == QLatin1String("array"))
            return readArray(level);
        return readSimpleValue(kind, m_xml.readElementText());
    }

    std::shared_ptr<PropertyDictionary> readDictionary(int level) {
        auto dictionary = std::make_shared<PropertyDictionary>();
        while (m_xml.readNextStartElement()) {
            const bool isKey = m_xml.name() == QLatin1String("key");
            std::string key = m_xml.readElementText().toStdString();
            if (!isKey || !m_xml.readNextStartElement()) {
                fail();
                break;
            }
            dictionary->values[std::move(key)] = readValue(level + 1);
        }
        return dictionary;
    }

    std::shared_ptr<PropertyArray> readArray(int level) {
        auto array = std::make_shared<PropertyArray>();
        while (m_xml.readNextStartElement())
            array->values.push_back(readValue(level + 1));
        return array;
    }

    PropertyValue readSimpleValue(const QString& kind, const QString& text) {
        bool isRead = true;
        PropertyValue value;
        if (kind == QLatin1String("string"))
            value = text.toStdString();
        else if (kind == QLatin1String("true") || kind == QLatin1String("false"))
            value = kind == QLatin1String("true");
        else if (kind == QLatin1String("integer"))
            value = std::int64_t{text.toLongLong(&isRead)};
        else if (kind == QLatin1String("real"))
            value = text.toDouble(&isRead);
        else if (kind == QLatin1String("data"))
            value = dataFrom(text, isRead);
        else if (kind == QLatin1String("date"))
            value = dateFrom(text, isRead);
        else
            isRead = false;
        if (!isRead)
            fail();
        return value;
    }

    static PropertyData dataFrom(const QString& text, bool& isRead) {
        QByteArray letters = text.toLatin1();
        for (const char blank : {' ', '\t', '\r', '\n'})
            letters.replace(QByteArray(1, blank), QByteArray());
        const auto decoded = QByteArray::fromBase64Encoding(letters, QByteArray::AbortOnBase64DecodingErrors);
        isRead = decoded.decodingStatus == QByteArray::Base64DecodingStatus::Ok;
        return {decoded.decoded.toStdString()};
    }

    static std::chrono::sys_seconds dateFrom(const QString& text, bool& isRead) {
        const QDateTime date = QDateTime::fromString(text.trimmed(), Qt::ISODate);
        isRead = date.isValid() && date.timeSpec() == Qt::UTC;
        return std::chrono::sys_seconds(std::chrono::seconds(isRead ? date.toSecsSinceEpoch() : 0));
    }

    QXmlStreamReader m_xml;
};

/// Whether XML can hold a character; it has no way to write most control characters.
bool isXmlCharacter(char32_t character) {
    if (character < 0x20)
        return character == '\t' || character == '\n' || character == '\r';
    return character != 0xFFFE && character != 0xFFFF;
}

/// Writes one list. What can't be written is told by `isWritten`; the text is worthless then.
class ListWriter final {
public:
    explicit ListWriter(QByteArray& text) : m_xml(&text) {
        m_xml.setAutoFormatting(true);
        m_xml.setAutoFormattingIndent(-1); // tabs
    }

    bool write(const PropertyDictionary& dictionary) {
        m_xml.writeStartDocument();
        m_xml.writeStartElement(QStringLiteral("plist"));
        m_xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
        writeDictionary(dictionary, 0);
        m_xml.writeEndDocument();
        return m_bWritten && !m_xml.hasError();
    }

private:
    void writeDictionary(const PropertyDictionary& dictionary, int level) {
        m_xml.writeStartElement(QStringLiteral("dict"));
        for (const auto& [key, value] : dictionary.values) {
            writeText(QStringLiteral("key"), key);
            writeValue(value, level + 1);
        }
        m_xml.writeEndElement();
    }

    void writeArray(const PropertyArray& array, int level) {
        m_xml.writeStartElement(QStringLiteral("array"));
        for (const PropertyValue& value : array.values)
            writeValue(value, level + 1);
        m_xml.writeEndElement();
    }

    void writeValue(const PropertyValue& value, int level) {
        if (level > kMostPropertyLevels)
            m_bWritten = false;
        if (!m_bWritten)
            return;
        std::visit([&](const auto& held) { writeHeld(held, level); }, value);
    }

    void writeHeld(bool held, int) {
        m_xml.writeEmptyElement(held ? QStringLiteral("true") : QStringLiteral("false"));
    }
    void writeHeld(std::int64_t held, int) {
        m_xml.writeTextElement(QStringLiteral("integer"), QString::number(qlonglong{held}));
    }
    void writeHeld(double held, int) {
        constexpr int kAllDigits = 17;
        m_xml.writeTextElement(QStringLiteral("real"), QString::number(held, 'g', kAllDigits));
    }
    void writeHeld(const std::string& held, int) { writeText(QStringLiteral("string"), held); }
    void writeHeld(const PropertyData& held, int) {
        m_xml.writeTextElement(QStringLiteral("data"),
                               QString::fromLatin1(QByteArray::fromStdString(held.bytes).toBase64()));
    }
    void writeHeld(std::chrono::sys_seconds held, int) {
        const QDateTime date =
            QDateTime::fromSecsSinceEpoch(held.time_since_epoch().count(), QTimeZone::utc());
        const QString text = date.toString(Qt::ISODate);
        m_bWritten = m_bWritten && !text.isEmpty();
        m_xml.writeTextElement(QStringLiteral("date"), text);
    }
    void writeHeld(const std::shared_ptr<PropertyArray>& held, int level) {
        if (held)
            writeArray(*held, level);
        else
            m_bWritten = false;
    }
    void writeHeld(const std::shared_ptr<PropertyDictionary>& held, int level) {
        if (held)
            writeDictionary(*held, level);
        else
            m_bWritten = false;
    }

    void writeText(const QString& element, const std::string& utf8) {
        const QByteArray raw = QByteArray::fromStdString(utf8);
        const QString text = QString::fromUtf8(raw);
        bool isText = raw.isValidUtf8();
        for (const char32_t character : text.toStdU32String())
            isText = isText && isXmlCharacter(character);
        m_bWritten = m_bWritten && isText;
        if (!m_bWritten)
            return;
        m_xml.writeStartElement(element);
        // Readers take a carriage return for the end of a line unless it is written as a number.
        const QStringList pieces = text.split(QLatin1Char('\r'));
        for (qsizetype index = 0; index < pieces.size(); ++index) {
            if (index > 0)
                m_xml.writeEntityReference(QStringLiteral("#13"));
            m_xml.writeCharacters(pieces[index]);
        }
        m_xml.writeEndElement();
    }

    QXmlStreamWriter m_xml;
    bool m_bWritten = true;
};

} // namespace

std::shared_ptr<PropertyDictionary> readPropertyList(std::string_view xml) {
    return ListReader(xml).read();
}

std::optional<std::string> writePropertyList(const PropertyDictionary& dictionary) {
    QByteArray text;
    if (!ListWriter(text).write(dictionary))
        return std::nullopt;
    return text.toStdString();
}

} // namespace veltrano
