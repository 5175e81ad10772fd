#pragma once

// CFailingInventory is an inventory of which every operation fails, for testing what a host or the
// engine does then.
//
//     SetInventory(std::make_shared<CFailingInventory>("the disk is full"));
//
// Safe on any thread.

#include "host/store/iinventory.h"

#include <string>
#include <utility>
#include <vector>

class CFailingInventory : public IInventory {
public:
    // `reason` is the error of every operation.
    explicit CFailingInventory(std::string reason) : m_reason(std::move(reason)) {}

    InventoryAnswer_e FindInterface(const std::string&, const std::string&, const std::string&,
                                    std::string&, std::string& error) override {
        error = m_reason;
        return InventoryAnswer_e::Failed;
    }
    InventoryAnswer_e FindAddress(const std::string&, const std::string&, InventoryRow&,
                                  std::string& error) override {
        error = m_reason;
        return InventoryAnswer_e::Failed;
    }
    bool Upsert(const std::string&, const std::vector<InventoryRow>&, std::string& error) override {
        error = m_reason;
        return false;
    }
    bool RemoveDevice(const std::string&, const std::string&, std::string& error) override {
        error = m_reason;
        return false;
    }

private:
    const std::string m_reason;
};
