#pragma once

#include "host/runtime/tzexport.h"

#include <memory>
#include <string>

// CMarkup is an XML document with a cursor: a level, which is the inside of one element (or the
// document itself), and on that level a current element, or none while the cursor stands before the
// first one.
//
//     CMarkup xml;                                  CMarkup copy;
//     xml.AddElem("rule");                          copy.SetDoc(xml.GetDoc());
//     xml.IntoElem();                               copy.FindElem("rule");
//     xml.AddElem("name", "uplink");                copy.IntoElem();
//     xml.OutOfElem();                              std::string name;
//     std::string text = xml.GetDoc();              copy.GetData("name", name);
//
// The operations that read or set data and attributes speak of the current element; while there is
// none, of the element that was entered. So a loader may ask for children by name both before
// IntoElem and right behind it.
//
// Texts are UTF-8. A byte that isn't part of a UTF-8 character is kept as it is in the tree and
// written by GetDoc as the character of the same number (Latin-1), so what GetDoc gives is always
// readable. White space and line ends of data stay as they are, a carriage return too. Control
// characters are written as references ("&#01;") and read back; a NUL, which XML can't name at all,
// is kept as "?".
//
// Reading expands the five predefined entities and numeric references, nothing else. Refused, with
// an empty document left behind: document type declarations, NUL bytes and references to characters
// that don't exist, text outside the elements, more than MaxDepth levels. No operation throws but
// for want of memory. An object is used by one thread at a time and isn't copied.
class TZPARSER_API CMarkup {
public:
    // Elements nested deeper than this are neither read nor added; the outermost element is
    // level 1.
    static constexpr int MaxDepth = 1000;

    // An element as a position; null is none. Valid until the next SetDoc of its document.
    struct Node;
    using Pos = const Node*;

    CMarkup();
    ~CMarkup();
    CMarkup(const CMarkup&) = delete;
    CMarkup& operator=(const CMarkup&) = delete;

    // Replaces the document; the cursor then stands before the first outermost element. Several
    // outermost elements are accepted, since writers of rule documents make them. On false the
    // document is empty and GetError says why.
    bool SetDoc(const std::string& text);
    // The document as text, with a declaration in front; empty for a document without elements. A
    // document built here is indented, unless it has more than 100 levels; one that was read keeps
    // the white space it came with, and what is added to it gets none.
    std::string GetDoc() const;
    // What the last SetDoc found wrong, with the byte offset; empty after a success.
    const std::string& GetError() const { return m_error; }

    // Moves to the next element of that name behind the current one on this level; an empty name
    // takes any. False when none is left, and the cursor then stays.
    bool FindElem(const std::string& name = std::string());
    // Makes the inside of the current element the level, before its first child. False without a
    // current element.
    bool IntoElem();
    // Makes the element of this level the current one, on its parent's level. False on the
    // document's level.
    bool OutOfElem();

    // Appends an element to the level, wherever the cursor stands on it, and makes it current.
    // `flags` has no meaning. False, with nothing changed, for a text that is no XML name and below
    // MaxDepth.
    bool AddElem(const std::string& name, const std::string& value = std::string(), int flags = 0);
    bool AddElem(const std::string& name, const char* value, int flags = 0);
    bool AddElem(const std::string& name, int value, int flags = 0);

    // The name of the current element; empty without one.
    std::string GetTagName() const;
    // The element's own character data; white space between child elements isn't data. Empty
    // without an element.
    std::string GetData() const;
    // The data of the element's first child of that name; the cursor stays. False when there is
    // none, and the argument is then untouched. A text that is no number reads 0 (digits in front
    // of other text count, values out of range become the nearest); "true" in any case and numbers
    // but 0 read true, all else false.
    bool GetData(const std::string& childName, std::string& value) const;
    bool GetData(const std::string& childName, int& value) const;
    bool GetData(const std::string& childName, bool& value) const;

    // Attributes of the element, converted like data. GetAttrib is false when there is none of that
    // name; SetAttrib replaces an attribute of that name and is false without an element and for a
    // text that is no XML name.
    bool GetAttrib(const std::string& name, std::string& value) const;
    bool GetAttrib(const std::string& name, int& value) const;
    bool SetAttrib(const std::string& name, const std::string& value);
    bool SetAttrib(const std::string& name, const char* value);
    bool SetAttrib(const std::string& name, int value);

    // Back before the first outermost element of the document.
    void ResetPos();
    // Back before the first element of this level, that is, to the start of the children of the
    // element entered.
    void ResetChildPos();
    // Sets the cursor directly: the level is the inside of `parent` (null: the document), the
    // current element `element` (null: before the first one). `child` has no meaning here, since a
    // level keeps no place in the levels below it. x_SetPos(GetParentPos(), nullptr, nullptr) is
    // ResetChildPos(). An `element` that isn't a child of `parent` counts as null. Positions must
    // come from this object.
    void x_SetPos(Pos parent, Pos element, Pos child);
    Pos GetParentPos() const;
    Pos GetElemPos() const;

private:
    struct Tree;

    std::unique_ptr<Tree> m_tree;
    std::string m_error;
};
