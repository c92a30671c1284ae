// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// GIO's enumerator; reads the attributes that a record holds.
#include "benchmarks/support/contender.h"
#include "benchmarks/support/gio.h"

namespace {

constexpr const char *kAttributes = "standard::name,standard::type,standard::size,"
                                    "standard::symlink-target,owner::user,owner::group,"
                                    "unix::mode,unix::nlink,time::modified";

void read(GFileInfo *info) {
    contender::use(g_file_info_get_name(info));
    contender::use(g_file_info_get_file_type(info));
    contender::use(g_file_info_get_size(info));
    contender::use(
        g_file_info_get_attribute_byte_string(info, G_FILE_ATTRIBUTE_STANDARD_SYMLINK_TARGET));
    contender::use(g_file_info_get_attribute_string(info, G_FILE_ATTRIBUTE_OWNER_USER));
    contender::use(g_file_info_get_attribute_string(info, G_FILE_ATTRIBUTE_OWNER_GROUP));
    contender::use(g_file_info_get_attribute_uint32(info, G_FILE_ATTRIBUTE_UNIX_MODE));
    contender::use(g_file_info_get_attribute_uint32(info, G_FILE_ATTRIBUTE_UNIX_NLINK));
    contender::use(g_file_info_get_attribute_uint64(info, G_FILE_ATTRIBUTE_TIME_MODIFIED));
}

long list(const char *path) {
    return listWithGio(path, kAttributes, read);
}

} // namespace

int main(int argumentCount, char **arguments) {
    return contender::run(argumentCount, arguments, list);
}
