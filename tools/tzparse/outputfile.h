#pragma once

#include <string>

// A file that a command writes, open as long as the object lives.
//
//     COutputFile file("page.html");
//     COutputWriter out(file.Descriptor());
//
// An existing file is replaced. Throws CToolError when it can't be opened.
class COutputFile {
public:
    explicit COutputFile(const std::string& name);
    ~COutputFile();
    COutputFile(const COutputFile&) = delete;
    COutputFile& operator=(const COutputFile&) = delete;

    int Descriptor() const { return m_descriptor; }

private:
    int m_descriptor;
};
