// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// This library: builds a complete family of FOLDER/photograph.png, FOLDER/ours.icns.
#include "icons/IconFamilyBuilder.h"

#include <string>

int main(int argumentCount, char **arguments) {
    if (argumentCount != 2)
        return 2;
    const std::string folder = arguments[1];
    MWCore::OSStatus status = MWCore::noErr;
    const auto picture =
        MWCore::Picture::read(QByteArray::fromStdString(folder + "/photograph.png"), &status);
    if (!picture)
        return 1;
    MWCore::IconFamilyBuilder builder;
    builder.addPicture(*picture);
    const auto family = builder.build();
    return family && family->writeToFile(QString::fromStdString(folder + "/ours.icns")) ? 0 : 1;
}
