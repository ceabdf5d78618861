// Used while the server of attachments is down.
export const AddAttachment = (name) => 'local/' + name;
// calendar.AddAttachmentFromPhone(name)                       /* decoy */
