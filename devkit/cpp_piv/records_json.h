// The client library's records as JSON: one member a field, under the field's name. Unset options are left out.
#pragma once

#include <cpp_piv/initialize_options.h>
#include <cpp_piv/records.h>

namespace cpp_piv {

void from_json(const nlohmann::json& json, CppPivLocalAuthTokens& tokens);
void from_json(const nlohmann::json& json, CppPivUser& user);
void from_json(const nlohmann::json& json, CppPivWorkspace& workspace);
void from_json(const nlohmann::json& json, CppPivDirectory& directory);
void from_json(const nlohmann::json& json, CppPivFindRevisionResult& revision);
void from_json(const nlohmann::json& json, CppPivUploadResult& result);

void to_json(nlohmann::json& json, const CppPivInitializeOptions& options);
void to_json(nlohmann::json& json, const CppPivUploadPayload& payload);

}  // namespace cpp_piv
