#pragma once
// The flat interface of velorajet.dll. Every function answers 0, or the number of the error as DAO
// gives it; VJetReason then tells more. Databases and recordsets are numbers; one that is not (or
// no longer) known gives 3420. Not for several threads at once.
#ifdef __cplusplus
extern "C" {
#endif

#define VJET_CALL __stdcall

typedef unsigned long VJetHandle;

typedef struct VJetField {
    const wchar_t* name;
    long size; /* characters, 1..255 */
    long allowZeroLength;
} VJetField;

typedef struct VJetIndex {
    const wchar_t* name;
    const wchar_t* fields; /* names, ";" between them */
    long primary;
    long unique;
} VJetIndex;

long VJET_CALL VJetCreateDatabase(const wchar_t* path, const wchar_t* locale, VJetHandle* database);
long VJET_CALL VJetOpenDatabase(const wchar_t* path, VJetHandle* database);
long VJET_CALL VJetCompactDatabase(const wchar_t* source, const wchar_t* destination);
long VJET_CALL VJetRepairDatabase(const wchar_t* path, long* records, long* lost);
/* The same; a table whose definition cannot be read is taken to have these fields and indexes. */
long VJET_CALL VJetRepairDatabaseAs(const wchar_t* path, const VJetField* fields, long fieldCount,
                                    const VJetIndex* indexes, long indexCount, long* records,
                                    long* lost);
long VJET_CALL VJetCloseDatabase(VJetHandle database);

long VJET_CALL VJetTableCount(VJetHandle database, long* count);
/* Texts: `length` gets the characters without the terminator, -1 for Null. They are put into
   `buffer` when `capacity` is larger than that; a null buffer only asks for the length. */
long VJET_CALL VJetTableName(VJetHandle database, long index, wchar_t* buffer, long capacity,
                             long* length);
long VJET_CALL VJetAppendTable(VJetHandle database, const wchar_t* name, const VJetField* fields,
                               long fieldCount, const VJetIndex* indexes, long indexCount);
long VJET_CALL VJetRenameTable(VJetHandle database, const wchar_t* name, const wchar_t* newName);
long VJET_CALL VJetDeleteTable(VJetHandle database, const wchar_t* name);
long VJET_CALL VJetBeginTrans(VJetHandle database);
long VJET_CALL VJetCommitTrans(VJetHandle database);
long VJET_CALL VJetRollback(VJetHandle database);

long VJET_CALL VJetOpenRecordset(VJetHandle database, const wchar_t* table, VJetHandle* recordset);
long VJET_CALL VJetCloseRecordset(VJetHandle recordset);
long VJET_CALL VJetSetIndex(VJetHandle recordset, const wchar_t* index);
long VJET_CALL VJetSeek(VJetHandle recordset, const wchar_t* comparison, const wchar_t* key,
                        long* noMatch);
long VJET_CALL VJetMove(VJetHandle recordset, long rows);
long VJET_CALL VJetMoveFirst(VJetHandle recordset);
long VJET_CALL VJetMoveLast(VJetHandle recordset);
long VJET_CALL VJetPosition(VJetHandle recordset, long* bof, long* eof);
long VJET_CALL VJetRecordCount(VJetHandle recordset, long* count);
long VJET_CALL VJetAddNew(VJetHandle recordset);
long VJET_CALL VJetEdit(VJetHandle recordset);
long VJET_CALL VJetUpdate(VJetHandle recordset);
long VJET_CALL VJetDelete(VJetHandle recordset);
long VJET_CALL VJetGetField(VJetHandle recordset, const wchar_t* field, wchar_t* buffer,
                            long capacity, long* length);
/* A null value sets Null. */
long VJET_CALL VJetSetField(VJetHandle recordset, const wchar_t* field, const wchar_t* value);

/* What the last error was about, in English. */
const char* VJET_CALL VJetReason(void);

#ifdef __cplusplus
}
#endif
