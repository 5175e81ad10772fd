#include "recordformat.h"

#include "host/json/hxjson.h"
#include "tzparser/engine/parserhelper.h"
#include "tzparser/value/appvariablevalue.h"

void WriteRecord(const CAppVariableValue& values, COutputWriter& out) {
    hxJson::Value schema;
    CParserHelper::GetParserStructure(*values.GetVarDef(), schema);
    CParserHelper::GetParserData(values, schema.toString(), out.Buffer(), "", "");
}
