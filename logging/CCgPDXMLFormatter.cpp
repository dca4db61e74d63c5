#include "logging/CCgPDXMLFormatter.h"

#include "logging/CCgFormatter.h"
#include "logging/CCgInternalError.h"
#include "logging/CCgMisc.h"
#include "logging/CCgPrintf.h"
#include "logging/util/CxPrintUtil.h"

#include <algorithm>
#include <string_view>

namespace zk::logging {

namespace {

struct XmlFormatter {
    bool firstRecord = true;
    bool singleComponent = false;
    bool singleProduct = false;
    bool singleProductId = false;
    bool singleServer = false;
    bool forceAsMessage = false;
    bool forceAsTrace = false;
};

struct Flag {
    std::string_view key;
    bool XmlFormatter::*value;
};

constexpr Flag flags[] = {
    {"singleComponent", &XmlFormatter::singleComponent}, {"singleProduct", &XmlFormatter::singleProduct},
    {"singleProductId", &XmlFormatter::singleProductId}, {"singleServer", &XmlFormatter::singleServer},
    {"forceAsMessage", &XmlFormatter::forceAsMessage},   {"forceAsTrace", &XmlFormatter::forceAsTrace},
};

// What has an element of its own. The organization has none.
constexpr std::string_view reservedKeys[] = {
    CCG_PROP_THREADID, CCG_PROP_CORRELATIONID, CCG_PROP_CLIENT,          CCG_PROP_SRCFILE,
    CCG_PROP_SRCLINE,  CCG_PROP_SRCFUNCTION,   CCG_PROP_SERVER,          CCG_PROP_SERVERFORMAT,
    CCG_PROP_PRODUCT,  CCG_PROP_COMPONENT,     CCG_PROP_PRODUCTINSTANCE, CCG_PROP_PROCESSID,
};

std::string_view levelWord(CCgLevel level) noexcept
{
    switch (level) {
    case CCG_FATAL:
    case CCG_ERROR: return "ERROR";
    case CCG_WARN: return "WARN";
    case CCG_INFO: return "INFO";
    case CCG_MIN: return "MIN";
    case CCG_MID: return "MID";
    case CCG_MAX: return "MAX";
    default: return "OTHER";
    }
}

// One record on its way into XML.
class RecordWriter {
public:
    RecordWriter(CCgObject& formatter, XmlFormatter& flags, CCgEvent& event)
        : formatter_(formatter), flags_(flags), event_(event)
    {
    }

    char* write()
    {
        RecordLocale const locale(formatter_, event_);
        if (flags_.firstRecord) {
            writeElements(true);
            flags_.firstRecord = false;
        }
        bool const asMessage =
            flags_.forceAsMessage == flags_.forceAsTrace ? event_.isMessage : flags_.forceAsMessage;
        if (asMessage)
            openMessage();
        else
            openTrace();
        writeTime();
        writeElements(false);
        writeText();
        writeAttributes();
        if (asMessage) {
            writeSource();
            writeTranslationInfo();
        } else {
            writeTraceSource();
            writeElement(" <Thread>", CCG_PROP_THREADID, "</Thread>\n");
            writeElement(" <Process>", CCG_PROP_PROCESSID, "</Process>\n");
        }
        writeElement(" <CorrelationId>", CCG_PROP_CORRELATIONID, "</CorrelationId>\n");
        writeElement(" <Principal>", CCG_PROP_CLIENT, "</Principal>\n");
        out_.append(asMessage ? std::string_view("</Message>\n") : std::string_view("</Trace>\n"));
        return out_.take();
    }

private:
    void openMessage()
    {
        std::string const& id = event_.messageId();
        out_.append("<Message Id=\"");
        out_.append(id.empty() ? std::string_view("None") : std::string_view(id));
        if (event_.level != CCG_ALWAYS) {
            out_.append("\" Severity=\"");
            out_.append(levelWord(event_.level));
        }
        out_.append("\">\n");
    }

    void openTrace()
    {
        if (event_.level == CCG_ALWAYS) {
            out_.append("<Trace>\n");
            return;
        }
        out_.append("<Trace Level=\"");
        out_.append(levelWord(event_.level));
        out_.append("\">\n");
    }

    void writeTime()
    {
        out_.append(" <Time Millis=\"");
        CxAppendDecimal(out_, event_.time);
        out_.append("\">");
        if (!appendTimeText(out_, formatter_, event_.time))
            report(CCG_ERROR, 20);
        out_.append("</Time>\n");
    }

    // Those that go once to the top of a file, or those that go into each record.
    void writeElements(bool single)
    {
        if (flags_.singleServer == single)
            writeServer();
        if (flags_.singleProduct == single)
            writeElement(" <ProductId>", CCG_PROP_PRODUCT, "</ProductId>\n");
        if (flags_.singleComponent == single)
            writeElement(" <Component>", CCG_PROP_COMPONENT, "</Component>\n");
        if (flags_.singleProductId == single)
            writeElement(" <ProductInstance>", CCG_PROP_PRODUCTINSTANCE, "</ProductInstance>\n");
    }

    void writeServer()
    {
        char const* const server = event_.property(CCG_PROP_SERVER);
        if (!server)
            return;
        out_.append(" <Server Format=\"");
        if (char const* const format = event_.property(CCG_PROP_SERVERFORMAT))
            out_.append(std::string_view(format));
        out_.append("\">");
        out_.append(std::string_view(server));
        out_.append("</Server>\n");
    }

    void writeText()
    {
        out_.append(" <LogText><![CDATA[");
        appendMessageText(out_, event_.message);
        out_.append("]]></LogText>\n");
    }

    void writeAttributes()
    {
        bool isOpen = false;
        for (auto const& [key, value] : event_.properties) {
            if (std::find(std::begin(reservedKeys), std::end(reservedKeys), key) != std::end(reservedKeys))
                continue;
            if (!isOpen)
                out_.append(" <LogAttribs>");
            isOpen = true;
            out_.append("<Key>");
            out_.append(key);
            out_.append("</Key><Value>");
            out_.append(value);
            out_.append("</Value>");
        }
        if (isOpen)
            out_.append("</LogAttribs>\n");
    }

    bool writeSource()
    {
        if (!writeElement(" <Source FileName=\"", CCG_PROP_SRCFILE, ""))
            return false;
        writeElement("\" Method=\"", CCG_PROP_SRCFUNCTION, "");
        writeElement("\" Line=\"", CCG_PROP_SRCLINE, "");
        out_.append("\"/>\n");
        return true;
    }

    void writeTraceSource()
    {
        if (!writeSource())
            out_.append(" <Source FileName=\"None\" Method=\"None\"/>\n");
    }

    void writeTranslationInfo()
    {
        CCgI18Msg const& message = event_.message;
        out_.append(" <TranslationInfo Type=\"XPG4\" Catalog=\"");
        if (message.catalogName)
            out_.append(*message.catalogName);
        out_.append("\" MsgKey=\"");
        CxAppendDecimal(out_, message.key);
        out_.append("\" SetId=\"");
        CxAppendDecimal(out_, message.set);
        out_.append("\">");
        for (CCgParm const& parameter : message.parameters) {
            out_.append("<Param><![CDATA[");
            writeParameter(parameter);
            out_.append("]]></Param>");
        }
        out_.append("</TranslationInfo>\n");
    }

    // By the default format of its type. A boolean is a byte: false is a NUL, which ends the text.
    void writeParameter(CCgParm const& parameter)
    {
        if (parameter.isText()) {
            out_.append(parameter.text);
        } else if (parameter.isNumber()) {
            CCgParmList list;
            list.add(parameter);
            CCgPrintfList(out_, "%f", &list);
        } else if (parameter.type == CCG_BOOLEAN || parameter.type == CCG_CHAR) {
            if (char const byte = static_cast<char>(parameter.integer); byte != '\0')
                out_.append(byte);
        } else {
            CxAppendDecimal(out_, parameter.integer);
        }
    }

    bool writeElement(std::string_view before, char const* key, std::string_view after)
    {
        char const* const value = event_.property(key);
        if (!value)
            return false;
        out_.append(before);
        out_.append(std::string_view(value));
        out_.append(after);
        return true;
    }

    CCgObject& formatter_;
    XmlFormatter& flags_;
    CCgEvent& event_;
    CxStringBuff out_;
};

void* createData(CCgObject*)
{
    return new XmlFormatter;
}

void destroyData(void* data)
{
    delete static_cast<XmlFormatter*>(data);
}

void configure(CCgObject* formatter, char const* key)
{
    auto* const own = static_cast<XmlFormatter*>(formatter->data);
    std::string const* const value = formatter->properties.find(key);
    for (Flag const& flag : flags)
        if (own && value && flag.key == key) {
            own->*flag.value = scanBoolean(*value).value_or(false);
            return;
        }
    configureFormatter(formatter, key);
}

char* format(CCgObject* formatter, CCgEvent* event)
{
    if (!event || !isOfKind(formatter, CCG_FORMATTER) || !formatter->data)
        return nullptr;
    return RecordWriter(*formatter, *static_cast<XmlFormatter*>(formatter->data), *event).write();
}

// A file that begins gets its single elements again.
char* header(CCgObject* formatter)
{
    if (formatter->data)
        static_cast<XmlFormatter*>(formatter->data)->firstRecord = true;
    return nullptr;
}

}  // namespace

CCgFormatterEntries const xmlFormatterEntries = {format, header, nullptr, nullptr};
CCgObjectEntries const xmlFormatterObjectEntries = {createData, destroyData, configure};

}  // namespace zk::logging
