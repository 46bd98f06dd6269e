/** @file
  Doubly linked lists with a head node.
**/
extern "C" {
#include <Library/BaseLib.h>
}

LIST_ENTRY *EFIAPI
InitializeListHead (IN OUT LIST_ENTRY *ListHead)
{
  ListHead->ForwardLink = ListHead;
  ListHead->BackLink = ListHead;
  return ListHead;
}

LIST_ENTRY *EFIAPI
InsertHeadList (IN OUT LIST_ENTRY *ListHead, IN OUT LIST_ENTRY *Entry)
{
  Entry->ForwardLink = ListHead->ForwardLink;
  Entry->BackLink = ListHead;
  Entry->ForwardLink->BackLink = Entry;
  ListHead->ForwardLink = Entry;
  return ListHead;
}

LIST_ENTRY *EFIAPI
InsertTailList (IN OUT LIST_ENTRY *ListHead, IN OUT LIST_ENTRY *Entry)
{
  Entry->ForwardLink = ListHead;
  Entry->BackLink = ListHead->BackLink;
  Entry->BackLink->ForwardLink = Entry;
  ListHead->BackLink = Entry;
  return ListHead;
}

LIST_ENTRY *EFIAPI
RemoveEntryList (IN CONST LIST_ENTRY *Entry)
{
  Entry->ForwardLink->BackLink = Entry->BackLink;
  Entry->BackLink->ForwardLink = Entry->ForwardLink;
  return Entry->ForwardLink;
}

BOOLEAN
EFIAPI
IsListEmpty (IN CONST LIST_ENTRY *ListHead)
{
  return (BOOLEAN)(ListHead->ForwardLink == ListHead);
}
