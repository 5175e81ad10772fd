#include "resultformat.h"

#include "host/json/hxjson.h"
#include "host/xml/markup.h"
#include "tzparser/rule/appparserule.h"

void WriteResultJson(CAppParseRule& rules, COutputWriter& out) {
    hxJson::Value document(hxJson::objectValue);
    rules.SaveResultAsJson(document);
    out.Buffer() += document.toStyledString();
}

void WriteResultXml(CAppParseRule& rules, COutputWriter& out) {
    CMarkup document;
    rules.SaveResultAsXML(document);
    out.Buffer() += document.GetDoc();
}
