// CCgPDXMLFormatter.h: "ccg_xmlformatter", one element for each record.
//
//   <Message Id="CCGBC0020E" Severity="ERROR">
//    <Time Millis="1714972089010">2024-05-06 07:08:09.010+02:00</Time>
//    <LogText><![CDATA[CCGBC0020E Out of memory.]]></LogText>
//    <TranslationInfo Type="XPG4" Catalog="ccgmsg" MsgKey="20" SetId="1"></TranslationInfo>
//   </Message>
//
// Properties, beside those of every formatter, each "true" or "false": "forceAsMessage" and
// "forceAsTrace" write every record as `Message` or `Trace`; "singleComponent", "singleProduct" (the
// element ProductId), "singleProductId" (the element ProductInstance) and "singleServer" write an element
// once before a file's first record, not in each.
//
// Nothing is escaped and nothing wraps the records: this is what readers of these logs take.
#pragma once

#include "logging/ObjClass.h"

namespace zk::logging {

extern CCgFormatterEntries const xmlFormatterEntries;
extern CCgObjectEntries const xmlFormatterObjectEntries;

}  // namespace zk::logging
