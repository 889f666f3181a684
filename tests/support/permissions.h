// Makes permission bits count for the calling thread even when the tests run as root.
// Root reads and writes past them through two capabilities; this drops those from the
// thread's effective set (and brings them back when it goes), so a folder made read-only
// with chmod really refuses new files, as it would for any user. Capabilities belong to
// a thread, and every file operation under test runs on the one that made the guard.
#pragma once

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

namespace lumidot::testing {

class PermissionsRespected {
public:
    PermissionsRespected() {
        header_.version = _LINUX_CAPABILITY_VERSION_3;
        header_.pid = 0;
        if (syscall(SYS_capget, &header_, saved_) != 0) {
            error_ = std::string("capget failed: ") + std::strerror(errno);
            return;
        }
        __user_cap_data_struct reduced[2];
        std::memcpy(reduced, saved_, sizeof reduced);
        for (int cap : {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH}) {
            reduced[cap / 32].effective &= ~(1u << (cap % 32));
        }
        if (syscall(SYS_capset, &header_, reduced) != 0) {
            error_ = std::string("capset failed: ") + std::strerror(errno);
            return;
        }
        dropped_ = true;
    }
    ~PermissionsRespected() {
        if (dropped_) syscall(SYS_capset, &header_, saved_);
    }
    PermissionsRespected(const PermissionsRespected&) = delete;
    PermissionsRespected& operator=(const PermissionsRespected&) = delete;

    bool ok() const { return dropped_; }
    const std::string& error() const { return error_; }

private:
    __user_cap_header_struct header_{};
    __user_cap_data_struct saved_[2]{};
    bool dropped_ = false;
    std::string error_;
};

}  // namespace lumidot::testing
