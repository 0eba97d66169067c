# awk -f stubs.awk COREDLL=LIST AYGSHELL=LIST …: assembly of one stub and one import slot for each function that the
# lists name, each in a section of its own, so that only what the program calls is linked. A slot is a symbol
# "__import:DLL:FUNCTION", by which the converter to the phone's file format knows it. The stub jumps by bx: the system's
# DLLs may be Thumb code.
BEGIN {
    # The device's own formatting takes no count, or none that every compiler's header means: StringCchPrintfW does.
    split("swprintf vswprintf _snwprintf _vsnwprintf sprintf vsprintf _snprintf _vsnprintf", uncounted, " ")
    for (i in uncounted) seen[uncounted[i]] = 1
    print "    .syntax unified\n    .arch armv4t\n    .arm"
    for (i = 1; i < ARGC; i++) {
        split(ARGV[i], part, "=")
        while ((status = (getline name < part[2])) > 0) {
            sub(/\r$/, "", name)
            # C++ names of the platform's own compiler are not ours to call; a name is taken from the first DLL that has it.
            if (name !~ /^[A-Za-z_][A-Za-z0-9_]*$/ || name in seen) continue
            seen[name] = 1
            stub(part[1], name)
        }
        if (status < 0) {
            print "stubs.awk: " part[2] " cannot be read" > "/dev/stderr"
            exit 1
        }
        close(part[2])
    }
}
function stub(dll, name,  slot) {
    slot = "\"__import:" dll ":" name "\""
    printf "    .section .text.stub.%s,\"ax\",%%progbits\n    .p2align 2\n", name
    printf "    .globl %s\n    .type %s,%%function\n%s:\n", name, name, name
    printf "    ldr ip, 1f\n    ldr ip, [ip]\n    bx ip\n1:  .word %s\n    .size %s, . - %s\n", slot, name, name
    printf "    .section .import.%s.%s,\"aw\",%%progbits\n    .p2align 2\n", dll, name
    printf "    .globl %s\n    .type %s,%%object\n%s:\n    .word 0\n    .size %s, 4\n", slot, slot, slot, slot
}
