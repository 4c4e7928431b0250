// Enumerators of the host that the plug-in passes by number. host_numbers_nx.cpp compares them with the host's own.
#pragma once

namespace pivra::host_numbers {

constexpr int cloneOperation = 3;   ///< export
constexpr int cloneAction = 3;      ///< overwrite
constexpr int familyTreatment = 1;  ///< likely: strip the family status
constexpr int cloneNaming = 2;      ///< by rule
constexpr int printAction = 3;      ///< a file of the operating system, also for a managed part
constexpr int draftingModule = 1;

}  // namespace pivra::host_numbers
