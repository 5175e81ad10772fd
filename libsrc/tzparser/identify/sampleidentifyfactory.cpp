#include "tzparser/identify/sampleidentifyfactory.h"

#include "tzparser/identify/canvasnodecmdsampleidentifyconditionregex.h"
#include "tzparser/identify/canvasnodecmdsampleidentifyconditionstr.h"

namespace {

using Factory = CDynCreateFactory<CCanvasNodeCmdSampleIdentifyConditionBase>;

template <class Kind>
void Register(Factory& factory) {
    factory.Register(std::make_unique<Kind>());
}

constexpr void (*Kinds[])(Factory&) = {
    &Register<CCanvasNodeCmdSampleIdentifyConditionContainAllStr>,
    &Register<CCanvasNodeCmdSampleIdentifyConditionContainAnyStr>,
    &Register<CCanvasNodeCmdSampleIdentifyConditionContainNoneStr>,
    &Register<CCanvasNodeCmdSampleIdentifyConditionContainRegex>,
    &Register<CCanvasNodeCmdSampleIdentifyConditionDonotContainRegex>,
};

}  // namespace

Factory& SampleIdentifyConditionFactory() {
    static Factory factory = [] {
        Factory filled;
        for (const auto& addTo : Kinds) addTo(filled);
        return filled;
    }();
    return factory;
}

namespace {

// Filled when the library loads, or before, should another static object ask earlier.
[[maybe_unused]] const Factory& FilledAtStart = SampleIdentifyConditionFactory();

}  // namespace
