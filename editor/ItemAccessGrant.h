#pragma once

#include "editor/HostServices.h"

#include <string>

namespace shotweaver {

/// Access to an item for as long as this lives.
class ItemAccessGrant {
  public:
    ItemAccessGrant(ItemAccess& access, std::string path)
        : access_(access), path_(std::move(path)), isStarted_(access.startAccess(path_)) {}
    ItemAccessGrant(const ItemAccessGrant&) = delete;
    ItemAccessGrant& operator=(const ItemAccessGrant&) = delete;
    ~ItemAccessGrant() {
        if (isStarted_) access_.stopAccess(path_);
    }

  private:
    ItemAccess& access_;
    std::string path_;
    bool isStarted_;
};

} // namespace shotweaver
