// MachineRegistry.h: a key of the machine's registry for the length of a test.
//
//   MachineRegistry registry("SOFTWARE\\ZkTest");
//   registry.setText("UserDirectory", folder.path() + "\\");
#pragma once

#include <memory>
#include <string>

class MachineRegistry {
public:
    /// Makes the key. On Windows it is really written, for 64-bit programs; elsewhere it lies in a folder of the
    /// test's own, which ZK_REGISTRY_DIR names meanwhile.
    explicit MachineRegistry(std::string key);
    /// Removes the keys that were not there before, and puts the texts of others back.
    ~MachineRegistry();
    MachineRegistry(MachineRegistry const&) = delete;
    MachineRegistry& operator=(MachineRegistry const&) = delete;

    std::string const& key() const { return key_; }
    void setText(std::string const& name, std::string const& text) const;

private:
    struct Store;

    std::string const key_;
    std::unique_ptr<Store> store_;
};
