#pragma once

#include "host/runtime/tzexport.h"
#include "tzparser/text/lumoserializable.h"
#include "tzparser/variable/appdatatype.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <boost/core/noncopyable.hpp>

class CMarkup;
namespace hxJson {
class Value;
}

/// One node of the tree that says which variables a parser yields, before any text is parsed: name,
/// data type, role, children. Rules add their variables to it, the value tree mirrors it. Tables
/// and arrays are the subclasses `CAppVariableTableDef` and `CAppVariableArrayDef`. The class also
/// derives the names under which a variable is known to scripts and user interfaces.
///
///     CAppVariableDef root(nullptr, "parser", AppDataType_Parsing, AppVariableType_Default, "");
///     auto child = std::make_unique<CAppVariableDef>(&root, "$cpu", AppDataType_Int,
///                                                    AppVariableType_Parser, "");
///     if (root.AddChild(child.get())) child.release();
///     root.GetChild("cpu")->GetLayerName();                   // "parser.$cpu"
///
/// A node owns its children and its built-in properties. The constructor doesn't link a node into
/// its parent and `AddChild` doesn't set the parent: both steps are the caller's. Pointers handed
/// out stay valid as long as the node they point to is in the tree.
///
/// No operation recurses over the depth of the tree, and none reports a failure but by its result.
/// A tree may be read by many threads while no thread writes to it.
class TZPARSER_API CAppVariableDef : public Lumo::serialization::LumoSerializable<hxJson::Value>,
                                     private boost::noncopyable {
public:
    using Children = std::vector<std::unique_ptr<CAppVariableDef>>;

    /// Empty texts, zero numbers, no parent.
    CAppVariableDef() = default;
    CAppVariableDef(CAppVariableDef* parent, const std::string& name, AppDataType_e dataType,
                    AppVariableType_e varType, const std::string& desc);
    ~CAppVariableDef() override;

    /// A new node of the class that fits the type, without name and parent, owned by the caller.
    /// The data type of the plain class stays 0 whatever was asked for; `Load` reads it.
    static CAppVariableDef* CreateVariableDefByType(AppDataType_e dataType);

    // ---- fields

    const std::string& GetName() const { return m_name; }
    void SetName(const std::string& name) { m_name = name; }
    const std::string& GetDesc() const { return m_desc; }
    AppVariableType_e GetVarType() const { return m_varType; }
    void SetVarType(AppVariableType_e varType) { m_varType = varType; }
    AppDataType_e GetDataType() const { return m_dataType; }
    void SetDataType(AppDataType_e dataType) { m_dataType = dataType; }
    CAppVariableDef* GetParent() { return m_parent; }
    const CAppVariableDef* GetParent() const { return m_parent; }
    /// Doesn't link; null makes the node a root.
    void SetParent(CAppVariableDef* parent) { m_parent = parent; }
    const std::string& GetInitexpression() const { return m_initExpression; }
    void SetInitExpression(const std::string& expression) { m_initExpression = expression; }
    /// Stores the name without the blanks, tabs and dollar signs at its ends.
    void SetPyName(const std::string& name);
    /// Always the empty text.
    std::string GetDataTypeString() const { return std::string(); }
    /// True when the node has no name.
    bool IsNull() const { return m_name.empty(); }

    // ---- predicates over the data type

    static bool IsTable(AppDataType_e dataType);
    static bool IsRealVar(AppDataType_e dataType);
    /// The type that a Python name stands for, see `CAppDataTypeHelper`.
    static AppDataType_e GetDataType(const std::string& pythonType);

    bool IsTable() const { return IsTable(m_dataType); }
    bool IsRealVar() const { return IsRealVar(m_dataType); }
    bool IsNode() const;
    bool IsArray() const { return m_dataType == AppDataType_Array; }
    bool IsUnknown() const { return m_dataType == AppDataType_Unknown; }
    bool IsAppDict() const { return m_dataType == AppDataType_AppDict; }
    bool IsUIObj() const;
    bool IsDlg() const { return m_dataType == AppDataType_Dlg; }
    bool IsUISingleVariable() const;
    bool IsUITableVariable() const;
    bool UIObjHasHidenValue() const { return IsUITableVariable(); }

    // ---- predicates over the role

    bool IsDDT() const { return m_varType == AppVariableType_DDT; }
    bool IsGDT() const { return m_varType == AppVariableType_GDT; }
    bool IsCSVT() const { return m_varType == AppVariableType_CSVT; }
    bool IsAppTable() const;
    /// The same as `IsAppTable`.
    bool IsSysTable() const { return IsAppTable(); }
    bool IsColumn() const { return m_varType == AppVariableType_Column; }
    bool IsAttr() const { return m_varType == AppVariableType_Attr; }
    bool IsUserVar() const { return m_varType == AppVariableType_User; }
    bool IsGlobalOutput() const { return m_varType == AppVariableType_GlobalOutput; }

    // ---- predicates over the place in the tree

    /// An ancestor is a dialog; false for a dialog itself.
    bool UnderDlg() const;
    /// An ancestor is a parsing root; false for data types 12 to 15.
    bool IsCmdParsingVar() const;
    /// `IsCmdParsingVar` for a node of data type 11 or 19.
    bool IsCmdParsingTable() const;
    bool IsGlobalVar() const;
    bool IsThreadVar() const { return !IsGlobalVar(); }
    /// An ancestor, not the node, is a column or an attribute.
    bool IsUnderColumn() const;
    bool IsUnderAttr() const;
    bool IsUISupportedFunction(const std::string& function) const;
    /// True for every name: no variable is unsupported.
    bool IsUISupportedVariable(const std::string& variable) const;
    /// True for a column that isn't a key of its table; false when the table has no keys.
    bool CanComaparebyKey() const;

    // ---- children

    const Children& GetChildren() const { return m_children; }
    std::size_t GetChildCount() const { return m_children.size(); }
    /// The child at a 0-based index below `GetChildCount()`.
    CAppVariableDef* GetChildAt(std::size_t index) { return m_children[index].get(); }
    const CAppVariableDef* GetChildAt(std::size_t index) const { return m_children[index].get(); }

    /// The first child of that name or of its alternative: for a name that begins with "$" the name
    /// without its leading dollar signs, else "$" and the name. Null when there is none, and for an
    /// empty name.
    CAppVariableDef* GetChild(std::string_view name);
    const CAppVariableDef* GetChild(std::string_view name) const;

    /// Appends a child and takes ownership. Under a node of data type 11 the child's data type
    /// becomes 10. False, and the child stays the caller's, when it is null or `GetChild` finds its
    /// name.
    bool AddChild(CAppVariableDef* child);
    /// The same at the front, and the data type stays.
    bool AddChildFront(CAppVariableDef* child);
    /// Unlinks a child and gives its ownership back to the caller; false when it isn't a child.
    bool RemoveChild(CAppVariableDef* child);
    /// Destroys the children; the built-in properties stay.
    void ClearTree();

    /// Appends the five built-in properties of a root that reports positions and the original text.
    void InitBuiltInProperties();
    /// The built-in properties, owned by the node.
    std::vector<CAppVariableDef*> GetBuiltInProperties() const;

    // ---- look-up

    /// Walks down `path` and gives the first child there of data type 13, 14 or 15; null when a
    /// step fails.
    CAppVariableDef* GetFirstStepOverNode(const std::vector<std::string>& path);
    /// Walks down all of `path` but its last element, the current step, and gives the next child
    /// there of data type 13, 14 or 15 behind the one so named; null when there is none.
    CAppVariableDef* GetNextStepOverNode(const std::vector<std::string>& path);
    /// Walks down the names joined by "."; null for an empty name and for a failed step.
    CAppVariableDef* GetVarNodeFromLayerName(const std::string& name);
    /// The same over a path; an empty path gives this node.
    CAppVariableDef* FindVarNodeFromLayerName(const std::vector<std::string>& path);
    /// The first descendant, depth first, whose `GetGlobalName` is `name`.
    CAppVariableDef* GetVarNodeFromPyVarName(const std::string& name);
    /// The nearest node of the data type, from this one towards the root, or null.
    CAppVariableDef* GetParentVar(AppDataType_e dataType);
    /// The children that a completion list offers for the typed beginning `filter`, ASCII case
    /// ignored. A child that fits both the filter and its alternative (see `GetChild`) stands
    /// twice.
    std::vector<CAppVariableDef*> GetIntellisenseChilds(const std::string& filter);

    // ---- names

    /// The names from the top down joined by "."; an ancestor of data type 5000 ends the name.
    std::string GetLayerName() const;
    /// The names without leading dollar signs joined by "_".
    std::string GetGlobalName() const;
    /// The subscript form of an entry of the parent; empty for a root.
    std::string GetTableArrayName() const;
    std::string GetDictName() const;
    std::string GetUIName() const;
    /// The script's name of the variable, in the form that its place in the tree asks for.
    std::string GetPyVarName() const;
    /// The same as `GetAppPyVarName`.
    std::string GetPyName() const { return GetAppPyVarName(); }
    std::string GetAppPyVarName() const;
    std::string GetAppPyTableName() const;
    std::string GetAppUIName() const;

    // ---- comparison, copy, documents

    /// Whether names, data types, roles and descriptions (and what a subclass adds) are equal, and
    /// with `bDeep` each child of this node has an equal child, in any place, in the other. The
    /// other node may have more children. False for null.
    virtual bool EqualTo(const CAppVariableDef* other, bool bDeep) const;

    /// A new object of the same class without parent, owned by the caller. With `bDeep` the
    /// children are copied too. The built-in properties always are, deep, without a parent. Python
    /// name and initial expression are not copied.
    CAppVariableDef* Copy(bool bDeep) const;

    /// Reads the node and all below it. A missing key reads as 0 or as the empty text; a child of a
    /// name that is taken is dropped. Returns the result of `LoadVariable` of this node.
    bool Load(const hxJson::Value& value) override;
    /// Writes the node and all below it. Returns the result of `SaveVariable` of this node.
    bool Save(hxJson::Value& value) override;

    /// The XML form stands in an element that the caller adds or finds, usually named "variable",
    /// and that is the cursor's current one before and after; false without a current element.
    ///
    ///     xml.AddElem("variable");
    ///     root.SaveToXml(xml);
    ///
    /// Reading keeps the fields whose attributes or elements are missing; a child of a name that is
    /// taken is dropped. Writing is false too when the tree is deeper than a document may be: all
    /// that has room stands in it.
    virtual bool LoadFromXml(CMarkup& xml);
    virtual bool SaveToXml(CMarkup& xml) const;

protected:
    /// The keys that a subclass adds to the document; nothing here.
    virtual bool LoadVariable(const hxJson::Value& value);
    virtual bool SaveVariable(hxJson::Value& value);
    /// The same in XML. The cursor's level is the inside of the node's element: reading starts
    /// before its first child, writing appends behind the last.
    virtual void LoadVariableFromXml(CMarkup& xml);
    virtual bool SaveVariableToXml(CMarkup& xml) const;
    /// A new object of the same class with the same fields, without children, built-in properties,
    /// parent, Python name and initial expression.
    virtual std::unique_ptr<CAppVariableDef> CloneShallow() const;
    /// The comparison of the node alone.
    virtual bool EqualSelf(const CAppVariableDef& other) const;
    /// The key columns of a table; null for any other node.
    virtual const std::vector<std::string>* KeyColumns() const { return nullptr; }
    /// Copies the fields that `CloneShallow` promises.
    void CopyFieldsTo(CAppVariableDef& copy) const;

private:
    template <class Predicate>
    bool AnyAncestor(Predicate predicate) const;
    CAppVariableDef* WalkDown(const std::string* begin, const std::string* end);
    bool HasGlobalName(std::string_view name) const;
    std::string_view NamePart() const;
    void LinkChild(CAppVariableDef* child);
    void LoadFields(const hxJson::Value& value);
    void SaveFields(hxJson::Value& value) const;
    void LoadFieldsFromXml(const CMarkup& xml);
    bool SaveFieldsToXml(CMarkup& xml) const;
    static void DestroyBelow(CAppVariableDef& root) noexcept;

    std::string m_name;
    std::string m_pyName;
    AppDataType_e m_dataType = AppDataType_None;
    std::string m_desc;
    AppVariableType_e m_varType = AppVariableType_Default;
    Children m_children;
    CAppVariableDef* m_parent = nullptr;
    std::string m_initExpression;
    Children m_builtInProperties;
};
