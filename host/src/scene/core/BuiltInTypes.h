// The node types every scene knows.
#pragma once

namespace host {

class TypeRegistry;
void addBuiltInTypes(TypeRegistry& registry);

} // namespace host
