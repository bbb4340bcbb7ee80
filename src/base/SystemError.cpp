#include "base/SystemError.h"

#include <cerrno>

namespace zem {

std::error_code LastSystemError() {
    return {errno, std::generic_category()};
}

std::string DescribeSystemError(int error) {
    switch (error) {
    case EACCES:
    case EPERM:
        return "you have no permission";
    case ENOSPC:
    case EDQUOT:
        return "the disk is full";
    case EFBIG:
        return "the file has reached the largest size that is allowed";
    case EIO:
        return "the disk reports a fault";
    case EROFS:
        return "the disk is read-only";
    case ENOENT:
    case ENOTDIR:
        return "its folder or the file itself is not there";
    case EISDIR:
        return "this is a folder, not a file";
    default:
        return std::generic_category().message(error);
    }
}

} // namespace zem
