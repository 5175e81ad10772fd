#include "tzparser/variable/appvariabledef.h"

#include "host/text/stlhelper.h"
#include "tzparser/variable/appdatatypehelper.h"
#include "tzparser/variable/appvariablearraydef.h"
#include "tzparser/variable/appvariabletabledef.h"
#include "tzparser/variable/siblingnames.h"

#include <algorithm>
#include <iterator>
#include <utility>

// Fields, predicates, children, comparison and copy. Whatever goes through a whole tree keeps its
// own stack, since a tree may be deeper than the thread's.

namespace {

constexpr AppDataType_e kTableTypes[] = {AppDataType_Table, AppDataType_Node19, AppDataType_Dict,
                                         AppDataType_AppDict, AppDataType_PyAppDict};

constexpr AppDataType_e kRealVarTypes[] = {AppDataType_Int,
                                           AppDataType_Double,
                                           AppDataType_Bool,
                                           AppDataType_String,
                                           AppDataType_IP,
                                           AppDataType_Mac,
                                           AppDataType_Device,
                                           AppDataType_Interface,
                                           AppDataType_Table,
                                           AppDataType_Node19,
                                           AppDataType_Dict,
                                           AppDataType_Percent,
                                           AppDataType_IPv6,
                                           AppDataType_Float,
                                           AppDataType_AppDict,
                                           AppDataType_DeviceTrafficState,
                                           AppDataType_NCTRecord,
                                           AppDataType_IPTrans,
                                           AppDataType_DeviceProperty,
                                           AppDataType_InterfaceProperty,
                                           AppDataType_ModuleProperty,
                                           AppDataType_SiteProperty,
                                           AppDataType_PyAppDict};

constexpr AppDataType_e kNodeTypes[] = {
    AppDataType_Root5000, AppDataType_Node5001, AppDataType_Node5002, AppDataType_Node17,
    AppDataType_Node18,   AppDataType_Node19,   AppDataType_Node20,   AppDataType_Table};

constexpr AppDataType_e kUISingleTypes[] = {AppDataType_UIObj553, AppDataType_UIObj555,
                                            AppDataType_UIObj556, AppDataType_UIObj570};

constexpr AppDataType_e kUITableTypes[] = {AppDataType_UIObj557, AppDataType_UIObj558,
                                           AppDataType_UIObj571, AppDataType_UIObj572};

constexpr const char* kBuiltInProperties[] = {"__allPosInfo", "__allOriInfo", "__allOriText",
                                              "__allOriTextLineNums", "__allExtendLineNums"};

template <class Types>
bool Contains(const Types& types, AppDataType_e dataType) {
    return std::find(std::begin(types), std::end(types), dataType) != std::end(types);
}

/// The children of a node by name. Order of equal names is the order of the tree.
std::vector<const CAppVariableDef*> SortedByName(const CAppVariableDef& node) {
    std::vector<const CAppVariableDef*> sorted;
    sorted.reserve(node.GetChildCount());
    for (const auto& child : node.GetChildren()) sorted.push_back(child.get());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto* a, const auto* b) { return a->GetName() < b->GetName(); });
    return sorted;
}

/// One pair of nodes whose children are being compared.
struct ComparedPair {
    ComparedPair(const CAppVariableDef& mine, const CAppVariableDef& theirs) : node(&mine) {
        if (mine.GetChildCount() == 0) return;
        candidates = SortedByName(theirs);
        Restart();
    }

    bool IsDone() const { return child == node->GetChildCount(); }

    void NextChild() {
        ++child;
        if (!IsDone()) Restart();
    }

    /// The next of the other node's children that has the current child's name, or null.
    const CAppVariableDef* NextCandidate() {
        if (candidate == candidates.size()) return nullptr;
        const CAppVariableDef* next = candidates[candidate];
        if (next->GetName() != node->GetChildAt(child)->GetName()) return nullptr;
        ++candidate;
        return next;
    }

    const CAppVariableDef* node;
    std::size_t child = 0;

private:
    void Restart() {
        const std::string& name = node->GetChildAt(child)->GetName();
        const auto first = std::lower_bound(
            candidates.begin(), candidates.end(), name,
            [](const auto* def, const std::string& wanted) { return def->GetName() < wanted; });
        candidate = static_cast<std::size_t>(first - candidates.begin());
    }

    std::vector<const CAppVariableDef*> candidates;
    std::size_t candidate = 0;
};

}  // namespace

CAppVariableDef::CAppVariableDef(CAppVariableDef* parent, const std::string& name,
                                 AppDataType_e dataType, AppVariableType_e varType,
                                 const std::string& desc)
    : m_name(name), m_dataType(dataType), m_desc(desc), m_varType(varType), m_parent(parent) {}

CAppVariableDef::~CAppVariableDef() {
    DestroyBelow(*this);
}

// The stack is threaded through the parent fields of the nodes that are going, so it needs no
// memory.
void CAppVariableDef::DestroyBelow(CAppVariableDef& root) noexcept {
    const auto takeLast = [](Children& owned) {
        CAppVariableDef* last = owned.back().release();
        owned.pop_back();
        return last;
    };
    CAppVariableDef* top = &root;
    for (;;) {
        Children& owned = top->m_children.empty() ? top->m_builtInProperties : top->m_children;
        if (!owned.empty()) {
            CAppVariableDef* below = takeLast(owned);
            below->m_parent = top;
            top = below;
            continue;
        }
        if (top == &root) return;
        std::unique_ptr<CAppVariableDef> finished(top);
        top = finished->m_parent;
    }
}

CAppVariableDef* CAppVariableDef::CreateVariableDefByType(AppDataType_e dataType) {
    switch (dataType) {
        case AppDataType_Array:
            return new CAppVariableArrayDef();
        case AppDataType_Table:
            return new CAppVariableTableDef();
        default:
            return new CAppVariableDef();
    }
}

void CAppVariableDef::SetPyName(const std::string& name) {
    std::string trimmed = name;
    StlHelper::trim(trimmed, " \t$");
    m_pyName = std::move(trimmed);
}

bool CAppVariableDef::IsTable(AppDataType_e dataType) {
    return Contains(kTableTypes, dataType);
}

bool CAppVariableDef::IsRealVar(AppDataType_e dataType) {
    return Contains(kRealVarTypes, dataType);
}

AppDataType_e CAppVariableDef::GetDataType(const std::string& pythonType) {
    return CAppDataTypeHelper::GetAppDataTypeFromPythonType(pythonType);
}

bool CAppVariableDef::IsNode() const {
    return Contains(kNodeTypes, m_dataType);
}

bool CAppVariableDef::IsUIObj() const {
    return m_dataType >= AppDataType_Dlg && m_dataType <= AppDataType_UIObj599;
}

bool CAppVariableDef::IsUISingleVariable() const {
    return Contains(kUISingleTypes, m_dataType);
}

bool CAppVariableDef::IsUITableVariable() const {
    return Contains(kUITableTypes, m_dataType);
}

bool CAppVariableDef::IsAppTable() const {
    return m_varType >= AppVariableType_CSVT && m_varType <= AppVariableType_AppTable1009;
}

template <class Predicate>
bool CAppVariableDef::AnyAncestor(Predicate predicate) const {
    for (const CAppVariableDef* node = m_parent; node != nullptr; node = node->m_parent) {
        if (predicate(*node)) return true;
    }
    return false;
}

bool CAppVariableDef::UnderDlg() const {
    return !IsDlg() && AnyAncestor([](const auto& node) { return node.IsDlg(); });
}

bool CAppVariableDef::IsCmdParsingVar() const {
    if (m_dataType >= AppDataType_Procedure && m_dataType <= AppDataType_StepNode15) return false;
    return AnyAncestor([](const auto& node) { return node.m_dataType == AppDataType_Parsing; });
}

bool CAppVariableDef::IsCmdParsingTable() const {
    return (m_dataType == AppDataType_Table || m_dataType == AppDataType_Node19) &&
           IsCmdParsingVar();
}

bool CAppVariableDef::IsGlobalVar() const {
    return m_varType == AppVariableType_Global1 || m_varType == AppVariableType_Global2 ||
           m_varType == AppVariableType_GlobalOutput || IsUIObj() || UnderDlg();
}

bool CAppVariableDef::IsUnderColumn() const {
    return AnyAncestor([](const auto& node) { return node.IsColumn(); });
}

bool CAppVariableDef::IsUnderAttr() const {
    return AnyAncestor([](const auto& node) { return node.IsAttr(); });
}

bool CAppVariableDef::IsUISupportedFunction(const std::string& function) const {
    return IsUITableVariable() || (IsDlg() && function == "Reset");
}

// The list of unsupported names is empty and stays so.
bool CAppVariableDef::IsUISupportedVariable(const std::string&) const {
    return true;
}

bool CAppVariableDef::CanComaparebyKey() const {
    if (!IsArray() || m_parent == nullptr) return false;
    const std::vector<std::string>* keys = m_parent->KeyColumns();
    return keys != nullptr && !keys->empty() &&
           std::find(keys->begin(), keys->end(), m_name) == keys->end();
}

CAppVariableDef* CAppVariableDef::GetChild(std::string_view name) {
    return const_cast<CAppVariableDef*>(std::as_const(*this).GetChild(name));
}

const CAppVariableDef* CAppVariableDef::GetChild(std::string_view name) const {
    if (name.empty()) return nullptr;
    for (const auto& child : m_children) {
        if (IsNameOrAlternative(child->m_name, name)) return child.get();
    }
    return nullptr;
}

bool CAppVariableDef::AddChild(CAppVariableDef* child) {
    if (child == nullptr || GetChild(child->m_name) != nullptr) return false;
    LinkChild(child);
    return true;
}

// Room is made before the child is taken over: when there is none, the child is still the caller's.
void CAppVariableDef::LinkChild(CAppVariableDef* child) {
    m_children.emplace_back().reset(child);
    // Every child of a table is a column, even one that isn't of the array class.
    if (m_dataType == AppDataType_Table) child->m_dataType = AppDataType_Array;
}

bool CAppVariableDef::AddChildFront(CAppVariableDef* child) {
    if (child == nullptr || GetChild(child->m_name) != nullptr) return false;
    m_children.emplace(m_children.begin(), nullptr)->reset(child);
    return true;
}

bool CAppVariableDef::RemoveChild(CAppVariableDef* child) {
    const auto place = std::find_if(m_children.begin(), m_children.end(),
                                    [&](const auto& owned) { return owned.get() == child; });
    if (place == m_children.end()) return false;
    static_cast<void>(place->release());
    m_children.erase(place);
    return true;
}

void CAppVariableDef::ClearTree() {
    m_children.clear();
}

void CAppVariableDef::InitBuiltInProperties() {
    for (const char* name : kBuiltInProperties) {
        m_builtInProperties.push_back(std::make_unique<CAppVariableDef>(
            this, name, AppDataType_String, AppVariableType_BuiltIn, std::string()));
    }
}

std::vector<CAppVariableDef*> CAppVariableDef::GetBuiltInProperties() const {
    std::vector<CAppVariableDef*> properties;
    properties.reserve(m_builtInProperties.size());
    for (const auto& property : m_builtInProperties) properties.push_back(property.get());
    return properties;
}

bool CAppVariableDef::EqualSelf(const CAppVariableDef& other) const {
    return m_name == other.m_name && m_dataType == other.m_dataType &&
           m_varType == other.m_varType && m_desc == other.m_desc;
}

// A child has to find any one equal child of the other node, so a pair of nodes that fails sends
// the pair above it to its next candidate, and only a child without a further candidate fails its
// own pair.
bool CAppVariableDef::EqualTo(const CAppVariableDef* other, bool bDeep) const {
    if (other == this) return true;
    if (other == nullptr || !EqualSelf(*other)) return false;
    if (!bDeep) return true;
    std::vector<ComparedPair> pairs;
    pairs.emplace_back(*this, *other);
    while (!pairs.empty()) {
        ComparedPair& pair = pairs.back();
        if (pair.IsDone()) {
            pairs.pop_back();
            if (!pairs.empty()) pairs.back().NextChild();
            continue;
        }
        const CAppVariableDef* child = pair.node->GetChildAt(pair.child);
        const CAppVariableDef* candidate = pair.NextCandidate();
        if (candidate == nullptr) {
            pairs.pop_back();
            if (pairs.empty()) return false;
        } else if (child->EqualSelf(*candidate)) {
            pairs.emplace_back(*child, *candidate);
        }
    }
    return true;
}

std::unique_ptr<CAppVariableDef> CAppVariableDef::CloneShallow() const {
    auto copy = std::make_unique<CAppVariableDef>();
    CopyFieldsTo(*copy);
    return copy;
}

void CAppVariableDef::CopyFieldsTo(CAppVariableDef& copy) const {
    copy.m_name = m_name;
    copy.m_dataType = m_dataType;
    copy.m_varType = m_varType;
    copy.m_desc = m_desc;
}

// Each round fills one copy; what it makes below that copy waits for its own round. The root copy
// owns all of it from the start, so nothing is lost when memory runs out.
CAppVariableDef* CAppVariableDef::Copy(bool bDeep) const {
    struct Pending {
        const CAppVariableDef* source;
        CAppVariableDef* copy;
    };
    std::unique_ptr<CAppVariableDef> root = CloneShallow();
    std::vector<Pending> pending = {{this, root.get()}};
    while (!pending.empty()) {
        const auto [source, copy] = pending.back();
        pending.pop_back();
        for (const auto& property : source->m_builtInProperties) {
            copy->m_builtInProperties.push_back(property->CloneShallow());
            pending.push_back({property.get(), copy->m_builtInProperties.back().get()});
        }
        if (source == this && !bDeep) continue;
        SiblingNames names(*copy, source->m_children.size());
        for (const auto& child : source->m_children) {
            if (!names.Claim(child->m_name)) continue;
            std::unique_ptr<CAppVariableDef> clone = child->CloneShallow();
            clone->m_parent = copy;
            copy->LinkChild(clone.get());
            CAppVariableDef* linked = clone.release();
            pending.push_back({child.get(), linked});
        }
    }
    return root.release();
}
