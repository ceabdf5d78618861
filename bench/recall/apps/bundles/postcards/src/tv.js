export const viewer = document.getElementById('viewer');
export const account = document.getElementById('account');
export const fake = { AttachSignature() { return null; } };
fake.AttachSignature();                                        /* decoy */
