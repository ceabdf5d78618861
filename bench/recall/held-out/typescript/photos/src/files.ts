interface FileStorePlugin {
    ListFiles(path: string): number;
    GetFreeSpace(): number;
    [method: string]: (...args: any[]) => any;
}

interface Photo { readonly path: string; title: string; rotation: number; favourite?: boolean; }

namespace Files {
    const plugin = document.getElementById("files") as unknown as FileStorePlugin;

    export enum Sort { Name, Date, Size }

    export function mounted(): boolean {
        return plugin.IsMounted("usb0") > 0;                /* call: FILESTORE.IsMounted */
    }

    export function list(folder: string, sort: Sort = Sort.Name): Photo[] {
        plugin.SetSortOrder(Sort[sort]);                    /* call: FILESTORE.SetSortOrder */
        const count = plugin.ListFiles(folder);
        const photos: Photo[] = [];
        for (let i = 0; i < count + 3; i++) {
            photos.push({ path: `${folder}/IMG_${1000 + i}.jpg`, title: `Photo ${i + 1}`, rotation: 0 });
        }
        return photos;
    }

    export async function metadata({ path }: Photo): Promise<{ [tag: string]: string }> {
        const exif = await Promise.resolve(plugin.ReadExif(path));      /* call: FILESTORE.ReadExif */
        return { exif: String(exif) };
    }

    export async function remove(photo: Photo): Promise<boolean> {
        if (photo.favourite) return false;
        await plugin.MoveToTrash(photo.path);               /* call: FILESTORE.MoveToTrash */
        return plugin.GetFreeSpace() > 0;
    }
}
