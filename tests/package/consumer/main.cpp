// A host in small: one definition, one text, one value. It uses nothing but the installed package.
#include "host/json/hxjson.h"
#include "tzparser/engine/tzparser.h"
#include "tzparser/value/appvariablevalue.h"

#include <iostream>
#include <memory>
#include <string>

namespace {

const char* const ruleText =
    R"({"parserule": [{"type": 0, "keywords": {"keyword": ["Success rate is $int:rate percent"]}}]})";

int Fail(const std::string& what) {
    std::cerr << "consumer: " << what << '\n';
    return 1;
}

}  // namespace

int main() {
    hxJson::Value definition;
    if (!hxJson::Reader().parse(R"({"sequences": [1]})", definition, true)) {
        return Fail("the definition is no JSON");
    }
    hxJson::Value sample;
    sample["index"] = 1;
    sample["parserRules"] = std::string(ruleText);
    definition["samples"].append(sample);

    CTzParser parser;
    parser.SetTableRowCountLimitForHash(1000);
    if (!parser.SetParser(definition)) return Fail("the definition has no sample");

    std::string error;
    const std::shared_ptr<CAppVariableValue> values =
        parser.Parse("router> ping 192.0.2.7\nSuccess rate is 80 percent (4/5)\n", error);
    if (!values) return Fail(error);
    CAppVariableValue* const rate = values->GetChildValueByName("rate");
    const CAppTextLet* const let = rate ? rate->GetVariableValue(0) : nullptr;
    if (!let) return Fail("no value of rate");

    std::cout << "rate " << let->text << " in row " << let->beginRow << '\n';
    return let->text == "80" && let->beginRow == 1 ? 0 : Fail("wrong value");
}
