// The version of the host program, shown by its About box and by "about -version".
namespace host {
extern const char* const kHostVersion;
const char* const kHostVersion = "2.4.1";
} // namespace host
