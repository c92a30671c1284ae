// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "commands.h"
#include "DisplayText.h"
#include "Failure.h"
#include "ItemJson.h"
#include "Output.h"
#include "ShownMetadata.h"

#include <MWCore/Aliases.h>

#include <sys/sysmacros.h>

namespace MWCore::mwfile {
namespace {

constexpr int64_t kNanoseconds = 1'000'000'000;

std::string deviceText(uint64_t device) {
    return std::to_string(major(device)) + ":" + std::to_string(minor(device));
}

void printJson(const AliasInfo &record) {
    JsonObject json;
    json.text("path", record.path.toStdString());
    json.text("realPath", record.realPath.toStdString());
    json.text("device", deviceText(record.identity.device));
    json.number("inode", static_cast<int64_t>(record.identity.inode));
    if (record.identity.birthTime)
        addTime(json, "dateCreated", *record.identity.birthTime / kNanoseconds);
    else
        json.null("dateCreated");
    const std::string handle = record.identity.handle.toHex().toStdString();
    json.textOrNull("handle", handle.empty() ? nullptr : handle.c_str());
    print(json.finished() + "\n");
}

void printText(const AliasInfo &record) {
    print("Path     " + DisplayText(record.path.toStdString()).text() + "\n");
    if (record.realPath != record.path)
        print("Real     " + DisplayText(record.realPath.toStdString()).text() + "\n");
    print("Device   " + deviceText(record.identity.device) + "\n");
    print("Inode    " + std::to_string(record.identity.inode) + "\n");
    const QByteArray handle = record.identity.handle.toHex();
    print("Handle   " + (handle.isEmpty() ? "none" : handle.toStdString()) + "\n");
}

} // namespace

void aliasMake(const AliasOptions &options) {
    const FSRef target = referenceTo(options.target);
    const auto form = options.finderForm ? AliasFileForm::Finder : AliasFileForm::DesktopEntry;
    const QByteArray file = QByteArray::fromStdString(options.file);
    const OSStatus status = FSCreateAliasFile(target, file, form);
    if (status == bdNamErr && !options.finderForm && !file.endsWith(".desktop"))
        throw UsageFailure(options.file, "the name must end with .desktop");
    if (status != noErr)
        throw Failure(options.file, status);
}

void aliasResolve(const AliasOptions &options) {
    FSRef ref = referenceTo(options.file);
    bool isFolder = false;
    bool wasAliased = false;
    const OSStatus status = FSResolveAliasFile(&ref, AliasSteps::All, &isFolder, &wasAliased);
    if (status == fnfErr)
        throw Failure(options.file, "its target is gone");
    if (status != noErr)
        throw Failure(options.file, status);
    if (!wasAliased)
        throw Failure(options.file, "not an alias");
    const std::string path = ref.path.toStdString();
    if (options.form == Form::Text) {
        // A program that reads the output needs the unescaped bytes.
        print((printsToTerminal() ? DisplayText(path).text() : path) + "\n");
        return;
    }
    JsonObject json;
    json.text("path", options.file)
        .text("aliasOrLinkTargetPath", path)
        .text("aliasOrLinkTargetKind", kindWord(isFolder ? MXItemKindFolder : MXItemKindFile));
    print(json.finished() + "\n");
}

void aliasShow(const AliasOptions &options) {
    (void)referenceTo(options.file);
    const auto record = aliasInfo(aliasRecordInFile(QByteArray::fromStdString(options.file)));
    if (!record)
        throw Failure(options.file, "contains no alias record");
    if (options.form == Form::Json)
        printJson(*record);
    else
        printText(*record);
}

} // namespace MWCore::mwfile
