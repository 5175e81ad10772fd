#include "tzparser/variable/appvariabledef.h"
#include "tzparser/variable/siblingnames.h"

#include <algorithm>
#include <utility>

// The names of a variable. Each is a walk from the node towards the root whose pieces are collected
// on the way up and put together in the opposite order.

namespace {

constexpr std::string_view kThreadPrefix = "ThreadVar.";

/// The pieces of a name, given from the node upwards.
class UpwardName {
public:
    void Add(std::string piece) {
        m_size += piece.size();
        m_pieces.push_back(std::move(piece));
    }

    /// Whether anything stands in the name so far; empty pieces don't count.
    bool HasText() const { return m_size > 0; }

    std::string Joined(std::string_view prefix, std::string_view separator,
                       std::string_view suffix = {}) const {
        std::string name(prefix);
        name.reserve(prefix.size() + m_size + m_pieces.size() * separator.size() + suffix.size());
        for (auto piece = m_pieces.rbegin(); piece != m_pieces.rend(); ++piece) {
            if (piece != m_pieces.rbegin()) name += separator;
            name += *piece;
        }
        return name += suffix;
    }

private:
    std::vector<std::string> m_pieces;
    std::size_t m_size = 0;
};

std::string Subscript(std::string_view part) {
    return std::string("[\"").append(part).append("\"]");
}

/// The nodes from `node` to the root, or to below the first ancestor that is an outer root.
std::vector<const CAppVariableDef*> WalkUp(const CAppVariableDef& node, bool stopAtOuterRoot) {
    std::vector<const CAppVariableDef*> walk = {&node};
    for (const CAppVariableDef* up = node.GetParent(); up != nullptr; up = up->GetParent()) {
        if (stopAtOuterRoot && up->GetDataType() == AppDataType_Root5000) break;
        walk.push_back(up);
    }
    return walk;
}

/// For each node of a walk, whether an ancestor has the data type. Ancestors beyond the end of the
/// walk count too.
std::vector<bool> HasAbove(const std::vector<const CAppVariableDef*>& walk,
                           AppDataType_e dataType) {
    const CAppVariableDef* beyond = walk.back()->GetParent();
    while (beyond != nullptr && beyond->GetDataType() != dataType) beyond = beyond->GetParent();
    bool above = beyond != nullptr;
    std::vector<bool> result(walk.size());
    for (std::size_t index = walk.size(); index-- > 0;) {
        result[index] = above;
        above = above || walk[index]->GetDataType() == dataType;
    }
    return result;
}

bool RemoveSuffix(std::string_view& text, std::string_view suffix) {
    if (text.size() < suffix.size() || text.substr(text.size() - suffix.size()) != suffix) {
        return false;
    }
    text.remove_suffix(suffix.size());
    return true;
}

}  // namespace

std::string_view CAppVariableDef::NamePart() const {
    if (m_name.empty() && m_dataType == AppDataType_Procedure) return "Procedure";
    return WithoutDollars(m_name);
}

std::string CAppVariableDef::GetLayerName() const {
    UpwardName name;
    for (const CAppVariableDef* node : WalkUp(*this, true)) name.Add(node->m_name);
    return name.Joined("", ".");
}

std::string CAppVariableDef::GetGlobalName() const {
    UpwardName name;
    for (const CAppVariableDef* node : WalkUp(*this, false)) {
        name.Add(std::string(node->NamePart()));
    }
    return name.Joined(IsGlobalVar() ? "" : kThreadPrefix, "_");
}

/// `GetGlobalName() == name`, taking the name off from its end, so that most nodes fail at the
/// first part.
bool CAppVariableDef::HasGlobalName(std::string_view name) const {
    for (const CAppVariableDef* node = this;; node = node->m_parent) {
        if (!RemoveSuffix(name, node->NamePart())) return false;
        if (node->m_parent == nullptr) break;
        if (!RemoveSuffix(name, "_")) return false;
    }
    return name == (IsGlobalVar() ? std::string_view() : kThreadPrefix);
}

std::string CAppVariableDef::GetTableArrayName() const {
    if (m_parent == nullptr) return std::string();
    return m_parent->GetGlobalName() + Subscript(NamePart());
}

std::string CAppVariableDef::GetDictName() const {
    const std::vector<const CAppVariableDef*> walk = WalkUp(*this, false);
    const std::vector<bool> parsingAbove = HasAbove(walk, AppDataType_Parsing);
    UpwardName name;
    for (std::size_t index = 0; index < walk.size(); ++index) {
        const CAppVariableDef& node = *walk[index];
        const bool isStep =
            node.m_dataType >= AppDataType_Procedure && node.m_dataType <= AppDataType_StepNode15;
        if (parsingAbove[index] && !isStep) {
            name.Add(Subscript(node.NamePart()));
            continue;
        }
        std::string piece(node.NamePart());
        if (node.m_dataType == AppDataType_Parsing) {
            piece += "_ParsingResult";
        } else if (name.HasText()) {
            piece += '_';
        }
        name.Add(std::move(piece));
    }
    return name.Joined(IsGlobalVar() ? "" : kThreadPrefix, "");
}

std::string CAppVariableDef::GetUIName() const {
    const std::vector<const CAppVariableDef*> walk = WalkUp(*this, false);
    const std::vector<bool> dialogAbove = HasAbove(walk, AppDataType_Dlg);
    UpwardName name;
    for (std::size_t index = 0; index < walk.size(); ++index) {
        const CAppVariableDef& node = *walk[index];
        if (dialogAbove[index] && !node.IsDlg()) {
            name.Add(Subscript(node.NamePart()));
            continue;
        }
        std::string piece(node.NamePart());
        if (!node.IsDlg() && name.HasText()) piece += '_';
        name.Add(std::move(piece));
    }
    return name.Joined(IsGlobalVar() ? "" : kThreadPrefix, "");
}

std::string CAppVariableDef::GetAppUIName() const {
    const std::vector<const CAppVariableDef*> walk = WalkUp(*this, true);
    const std::vector<bool> dialogAbove = HasAbove(walk, AppDataType_Dlg);
    UpwardName name;
    for (std::size_t index = 0; index < walk.size(); ++index) {
        const CAppVariableDef& node = *walk[index];
        if (dialogAbove[index] && !node.IsDlg()) {
            name.Add(Subscript(node.NamePart()));
            continue;
        }
        std::string piece(node.NamePart());
        piece += node.IsDlg() || index == 0 ? "Node_Data" : "_";
        name.Add(std::move(piece));
    }
    return name.Joined("", "");
}

std::string CAppVariableDef::GetAppPyTableName() const {
    const bool keepDollars = m_varType == AppVariableType_AppTable1009;
    UpwardName name;
    for (const CAppVariableDef* node : WalkUp(*this, true)) {
        name.Add(std::string(keepDollars ? node->m_name : WithoutDollars(node->m_name)));
    }
    return name.Joined("PyTable(\"", "$", "\")");
}

std::string CAppVariableDef::GetPyVarName() const {
    if (IsUIObj() || UnderDlg()) return GetUIName();
    const bool isTable = m_dataType == AppDataType_Table || m_dataType == AppDataType_Node19;
    return !isTable && IsCmdParsingVar() ? GetDictName() : GetGlobalName();
}

// A column or attribute hangs its call behind its parent's name; the walk ends at the first node
// that has a name of its own.
std::string CAppVariableDef::GetAppPyVarName() const {
    const std::vector<const CAppVariableDef*> walk = WalkUp(*this, false);
    const std::vector<bool> dialogAbove = HasAbove(walk, AppDataType_Dlg);
    UpwardName name;
    for (std::size_t index = 0; index < walk.size(); ++index) {
        const CAppVariableDef& node = *walk[index];
        if (node.IsUIObj() || dialogAbove[index]) {
            name.Add(node.GetAppUIName());
            break;
        }
        if (!node.IsColumn() && !node.IsAttr()) {
            name.Add(node.IsAppTable() ? node.GetAppPyTableName() : node.m_pyName);
            break;
        }
        const char* call = node.IsColumn() ? ".GetOneColumn(\"" : ".GetAttribute(\"";
        name.Add(std::string(call).append(WithoutDollars(node.m_name)).append("\")"));
    }
    return name.Joined("", "");
}
