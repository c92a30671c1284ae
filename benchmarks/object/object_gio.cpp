// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// GIO's enumerator; reads the attributes that a file manager shows.
#include "benchmarks/support/contender.h"
#include "benchmarks/support/gio.h"

namespace {

constexpr const char *kAttributes = "standard::*,owner::*,unix::*,time::*,access::*";

constexpr const char *kRights[] = {
    G_FILE_ATTRIBUTE_ACCESS_CAN_READ,    G_FILE_ATTRIBUTE_ACCESS_CAN_WRITE,
    G_FILE_ATTRIBUTE_ACCESS_CAN_EXECUTE, G_FILE_ATTRIBUTE_ACCESS_CAN_DELETE,
    G_FILE_ATTRIBUTE_ACCESS_CAN_TRASH,   G_FILE_ATTRIBUTE_ACCESS_CAN_RENAME,
};

void read(GFileInfo *info) {
    contender::use(g_file_info_get_name(info));
    contender::use(g_file_info_get_file_type(info));
    contender::use(g_file_info_get_content_type(info));
    contender::use(g_file_info_get_size(info));
    contender::use(
        g_file_info_get_attribute_byte_string(info, G_FILE_ATTRIBUTE_STANDARD_SYMLINK_TARGET));
    contender::use(g_file_info_get_attribute_string(info, G_FILE_ATTRIBUTE_OWNER_USER));
    contender::use(g_file_info_get_attribute_string(info, G_FILE_ATTRIBUTE_OWNER_GROUP));
    contender::use(g_file_info_get_attribute_uint32(info, G_FILE_ATTRIBUTE_UNIX_MODE));
    contender::use(g_file_info_get_attribute_uint64(info, G_FILE_ATTRIBUTE_TIME_MODIFIED));
    for (const char *const right : kRights)
        contender::use(g_file_info_get_attribute_boolean(info, right));
}

long list(const char *path) {
    return listWithGio(path, kAttributes, read);
}

} // namespace

int main(int argumentCount, char **arguments) {
    return contender::run(argumentCount, arguments, list);
}
