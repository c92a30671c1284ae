// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArrayView>
#include <QVariant>

/// One reader per format. The results are those of readPropertyList().
namespace MWCore {

/// A binary property list, version "bplist0".
[[nodiscard]] QVariant readBinaryPropertyList(QByteArrayView bytes);

/// A property list in XML, as UTF-8.
[[nodiscard]] QVariant readXmlPropertyList(QByteArrayView bytes);

} // namespace MWCore
