# Writes OUTPUT: a table of the files FILES and their bytes, for network/pages.h.
set(content "#include \"network/pages.h\"\n\nnamespace corvanel {\nnamespace {\n")
set(entries "")
set(number 0)
foreach(file ${FILES})
  file(READ ${file} bytes HEX)
  get_filename_component(name ${file} NAME)
  string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${bytes}")
  # A literal of bounded length each: compilers need not take longer ones.
  string(REGEX REPLACE "((\\\\x..)(\\\\x..)?(\\\\x..)?(\\\\x..)?(\\\\x..)?(\\\\x..)?(\\\\x..)?(\\\\x..)?)" "\"\\1\"\n" bytes "${bytes}")
  string(APPEND content "constexpr char kFile${number}[] =\n${bytes};\n")
  string(APPEND entries "    {\"${name}\", {kFile${number}, sizeof kFile${number} - 1}},\n")
  math(EXPR number "${number} + 1")
endforeach()
string(APPEND content "}  // namespace\n\nconst std::vector<PageFile>& PageFiles() {\n"
  "  static const std::vector<PageFile> files = {\n${entries}  };\n  return files;\n}\n\n}  // namespace corvanel\n")
file(WRITE ${OUTPUT} "${content}")
