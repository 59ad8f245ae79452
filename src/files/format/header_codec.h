// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "model/data_file_header.h"

namespace tarvolt {

/// Bytes of the record that starts a data file.
inline constexpr std::size_t kHeaderSize = 156;

/// That record.
using HeaderBytes = std::array<char, kHeaderSize>;

/// The record as it stands in the file. Texts are cut or blank-padded to their width.
HeaderBytes EncodeHeader(const DataFileHeader& header);

/// The record from the first kHeaderSize bytes of `bytes`, which must hold that many. Nothing is tested: channels and
/// notesLength are whatever the file says.
DataFileHeader DecodeHeader(std::string_view bytes);

/// False when these bytes, which may be fewer than kHeaderSize, are no begin of such a record: text of any other kind
/// has letters where the writer's version stands. Zeros are what a disk leaves of a file that was never written.
bool BeginsAsHeader(std::string_view bytes);

}  // namespace tarvolt
